#include "window_set.h"

#include "desks/many_texts.h"

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

void storeAFewTexts(MemoryPreferences &preferences) {
    const QString words =
        u"Bodø Bouvet Equinor Hafslund Kubernetes Lyse PostgreSQL Sjur Skatteetaten Tromsø Vipps Ålesund kvikklunsj smidig"_s;
    preferences.set(keys::transcriptionHistory, encodeEntries(historyOfAFewDays()).value_or(QByteArray()));
    preferences.set(keys::dictionary, serialiseDictionary(words.split(u' ')));
    preferences.set(
        keys::snippets,
        serialiseSnippets({
            {u"1"_s, u"my email address"_s, u"ingrid.solberg@example.com"_s},
            {u"2"_s, u"adr"_s, u"Storgata 14, 8006 Bodø"_s},
            {u"3"_s, u"sig"_s, u"Vennlig hilsen\nIngrid Solberg"_s},
            {u"4"_s, u"calendar link"_s, u"https://cal.example.com/ingrid/30min"_s},
            {u"5"_s, u"thanks reply"_s,
             u"Thank you for the quick answer — I will get back to you before the end of the week."_s},
        }));
}

void fill(MemoryPreferences &preferences, Contents contents) {
    if (contents == Contents::Empty)
        return;
    if (contents == Contents::Filled)
        storeAFewTexts(preferences);
    else
        testing::storeManyTexts(preferences, Date(kAfternoon));
    preferences.set(keys::firstUseDate, before(37 * 24h + 1h));
    preferences.set(
        keys::learnedWords,
        uR"({"no":["digg","gira","kjempebra","dugnad","pålegg"],"sv":["fika","lagom","mysig"]})"_s);
}

} // namespace

MainQueue::Timer PictureClock::after(std::chrono::milliseconds delay, Task task) {
    return m_queue.after(delay, std::move(task));
}

Date PictureClock::now() const {
    return Date(kAfternoon);
}

WindowSet::WindowSet(QQmlEngine &engine, Contents contents, const OtherPages &pages)
    : WindowDesk(
          engine, [contents](MemoryPreferences &preferences) { fill(preferences, contents); }, pages) {
    if (contents != Contents::Empty)
        serverTotalWords = 12300;
    home.refresh();
}

QQuickWindow &WindowSet::show(QSize size) {
    controller.show();
    controller.window()->resize(size);
    return *controller.window();
}

} // namespace velmo::screenshots
