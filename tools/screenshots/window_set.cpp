#include "window_set.h"

#include "store/dictionary_words.h"
#include "store/preference_keys.h"
#include "store/snippet_list.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo::screenshots {

namespace {

using Contents = WindowSet::Contents;

/// 16 November 2026, 15:00 UTC.
constexpr std::chrono::seconds kAfternoon{1794841200};

Date before(std::chrono::minutes time) {
    return Date(kAfternoon) - time;
}

QList<Entry> historyOfAFewDays() {
    return {
        {u"1"_s, u"Kan du sende meg referatet fra møtet i går?"_s, before(28min), 3.1},
        {u"2"_s,
         u"Let’s move the design review to Thursday at ten, same room as last time. I’ll bring the new drawings and we can go through the open points."_s,
         before(50min), 11.0},
        {u"3"_s, u"Perfekt 👍 det passer fint for meg."_s, before(5h + 12min), 2.8},
        {u"4"_s, u"Tack för snabbt svar! Vi hörs imorgon."_s, before(21h + 39min), 2.6},
        {u"5"_s, u"Remember to book the ferry to Bodø before Friday."_s, before(27h + 55min), 3.9},
        {u"6"_s, u"Muista ostaa kahvia ja maitoa."_s, before(30h + 3min), 2.4},
        {u"7"_s, u"Hilsen fra fjellet."_s, before(49h), 1.2},
    };
}

QList<Entry> longHistory() {
    QList<Entry> entries;
    for (int number = 0; number < HistoryStore::maxEntries; ++number) {
        const QString text =
            u"Dette er en lang diktert tekst om et møte som varte lenge. "_s.repeated(1 + number % 12);
        entries.append({QString::number(number), text.trimmed(), before(number * 47min), 20.0});
    }
    entries[1].text = u"https://example.com/"_s + u"enSværtLangAdresseUtenMellomrom"_s.repeated(8);
    return entries;
}

QStringList wordsOf(Contents contents) {
    if (contents == Contents::Filled)
        return u"Bodø Bouvet Equinor Hafslund Kubernetes Lyse PostgreSQL Sjur Skatteetaten Tromsø Vipps Ålesund kvikklunsj smidig"_s
            .split(u' ');
    QStringList words;
    for (int number = 0; contents == Contents::Overfull && number < 2000; ++number)
        words.append(u"ord"_s.repeated(1 + number % 4) + QString::number(number));
    if (contents == Contents::Overfull)
        words.append(u"Menneskerettighetsorganisasjonsmedlem"_s.repeated(6));
    return words;
}

QList<SnippetEntry> snippetsOf(Contents contents) {
    if (contents == Contents::Filled)
        return {
            {u"1"_s, u"my email address"_s, u"ingrid.solberg@example.com"_s},
            {u"2"_s, u"adr"_s, u"Storgata 14, 8006 Bodø"_s},
            {u"3"_s, u"sig"_s, u"Vennlig hilsen\nIngrid Solberg"_s},
            {u"4"_s, u"calendar link"_s, u"https://cal.example.com/ingrid/30min"_s},
            {u"5"_s, u"thanks reply"_s,
             u"Thank you for the quick answer — I will get back to you before the end of the week."_s},
        };
    QList<SnippetEntry> snippets;
    for (int number = 0; contents == Contents::Overfull && number < 500; ++number)
        snippets.append({QString::number(number), u"utløser "_s + QString::number(number),
                         u"En lang tekst som settes inn. "_s.repeated(1 + number % 9).trimmed()});
    return snippets;
}

/// The stores read what they hold when they are made.
MemoryPreferences &filled(MemoryPreferences &preferences, Contents contents, const QString &triggerKey) {
    if (!triggerKey.isEmpty())
        preferences.set(keys::triggerKey, triggerKey);
    if (contents == Contents::Empty)
        return preferences;
    const QList<Entry> entries = contents == Contents::Filled ? historyOfAFewDays() : longHistory();
    preferences.set(keys::transcriptionHistory, encodeEntries(entries).value_or(QByteArray()));
    preferences.set(keys::firstUseDate, before(37 * 24h + 1h));
    preferences.set(keys::dictionary, serialiseDictionary(wordsOf(contents)));
    preferences.set(keys::snippets, serialiseSnippets(snippetsOf(contents)));
    preferences.set(
        keys::learnedWords,
        uR"({"no":["digg","gira","kjempebra","dugnad","pålegg"],"sv":["fika","lagom","mysig"]})"_s);
    return preferences;
}

} // namespace

MainQueue::Timer PictureClock::after(std::chrono::milliseconds delay, Task task) {
    return m_queue.after(delay, std::move(task));
}

Date PictureClock::now() const {
    return Date(kAfternoon);
}

WindowSet::WindowSet(QQmlEngine &engine, Contents contents, const QString &triggerKey, OtherPages pages)
    : m_contents(contents),
      m_historyStore(filled(m_preferences, contents, triggerKey), m_clock),
      m_home({m_clock, m_preferences, m_watch, m_triggerKeyName, m_historyStore, m_calendar, *this,
              [this]() -> std::optional<qint64> {
                  return m_contents == Contents::Empty ? std::optional<qint64>() : 12300;
              },
              [](const QString &) {}, m_undoOffer}),
      m_dictionary({m_preferences, m_watch, m_collation, *this, *this, m_undoOffer}),
      m_snippets({m_preferences, m_watch, m_collation, *this, *this, m_undoOffer}),
      m_controller(engine,
                   {m_view, m_undoOffer, &m_home, &m_dictionary, &m_snippets, pages.mode, pages.account,
                    pages.settings},
                   [] { return true; }) {}

QQuickWindow &WindowSet::show(QSize size) {
    m_controller.show();
    m_controller.window()->resize(size);
    return *m_controller.window();
}

} // namespace velmo::screenshots
