#include "ui/models/home_view.h"

#include "base/calendar.h"
#include "service/wire/session_interfaces.h"
#include "store/history_store.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "ui/models/history_days.h"
#include "ui/models/platform_texts.h"
#include "ui/models/trigger_key_name.h"
#include "ui/models/undo_offer.h"
#include "ui/models/usage_statistics.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

QList<StatisticCard> cards(const UsageStatistics &usage) {
    return {
        {u"🏆"_s, QString::number(usage.daysOfUse), HomeView::tr("days")},
        {u"🚀"_s, wordsText(usage.totalWords), HomeView::tr("words")},
        {u"🎯"_s, QString::number(usage.wordsPerMinute), HomeView::tr("WPM")},
        {u"⏱️"_s, timeSavedText(usage.minutesSaved), HomeView::tr("saved")},
    };
}

QList<HistoryRow> rowsOf(const HistoryDay &day, const Calendar &calendar) {
    QList<HistoryRow> rows;
    for (const Entry &entry : day.entries)
        rows.append({entry.id, entry.text, calendar.timeOfDay(entry.timestamp), day.title, false, false});
    rows.first().isFirst = true;
    rows.last().isLast = true;
    return rows;
}

} // namespace

HomeView::HomeView(const Collaborators &collaborators) : m_with(collaborators) {
    m_with.watch.follow(keys::heroCardDismissed, this, [this] { loadHeroCard(); });
    connect(&m_with.triggerKeyName, &TriggerKeyName::changed, this, &HomeView::triggerKeyChanged);
    connect(&m_with.historyStore, &HistoryStore::entriesChanged, this, &HomeView::refresh);
    loadHeroCard();
    refresh();
}

void HomeView::dismissHeroCard() {
    m_with.preferences.set(keys::heroCardDismissed, true);
    showHeroCard(false); // also where nothing can be stored
}

QString HomeView::heroTitle() const {
    return tr("Hold %1 to dictate and let Velmo transcribe for you")
        .arg(u"<b>%1</b>"_s.arg(keyLabel().toHtmlEscaped()));
}

QString HomeView::heroText() const {
    return tr("Press and hold %1 to dictate in any app. "
              "Velmo will handle transcription and insert text at your cursor.")
        .arg(m_with.triggerKeyName.inText());
}

QString HomeView::keyLabel() const {
    return m_with.triggerKeyName.label();
}

QString HomeView::emptyText() const {
    return m_with.canWatchKeys
               ? tr("Hold %1 or double-tap %1 to start dictating").arg(m_with.triggerKeyName.inText())
               : platform_texts::toggleCommandNote();
}

void HomeView::copy(const QString &entryId) {
    for (const Entry &entry : m_with.historyStore.entries()) {
        if (entry.id == entryId)
            return m_with.copyText(entry.text);
    }
}

void HomeView::remove(const QString &entryId) {
    const QList<Entry> entries = m_with.historyStore.entries();
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry &entry) { return entry.id == entryId; });
    if (found == entries.end())
        return;
    m_with.historyStore.remove(entryId);
    m_with.undoOffer.offer(tr("Transcription deleted"),
                           [store = &m_with.historyStore, entry = *found] { store->restore(entry); });
}

void HomeView::refresh() {
    loadHistory();
    loadStatistics();
    waitForTomorrow();
}

void HomeView::loadHeroCard() {
    showHeroCard(m_with.canWatchKeys && !m_with.preferences.boolean(keys::heroCardDismissed).value_or(false));
}

void HomeView::showHeroCard(bool isShown) {
    if (isShown == std::exchange(m_isHeroCardShown, isShown))
        return;
    Q_EMIT heroCardChanged();
}

void HomeView::loadHistory() {
    const bool wasEmpty = isHistoryEmpty();
    QList<HistoryRow> rows;
    for (const HistoryDay &day :
         historyDays(m_with.historyStore.entries(), m_with.queue.now(), m_with.calendar))
        rows.append(rowsOf(day, m_with.calendar));
    m_history.setRows(rows);
    if (wasEmpty != isHistoryEmpty())
        Q_EMIT historyChanged();
}

void HomeView::loadStatistics() {
    const auto serverTotalWords =
        m_with.account.isLoggedIn() ? m_with.serverTotalWords() : std::optional<qint64>();
    const QList<StatisticCard> statistics =
        cards(usageStatistics(m_with.historyStore.entries(), m_with.historyStore.firstUseDate(),
                              serverTotalWords, m_with.queue.now(), m_with.calendar));
    if (statistics == m_statistics)
        return;
    m_statistics = statistics;
    Q_EMIT statisticsChanged();
}

/// At midnight "Today" becomes "Yesterday".
void HomeView::waitForTomorrow() {
    const Date now = m_with.queue.now();
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_with.calendar.startOfDay(now, 1) - now);
    m_tomorrow = m_with.queue.after(left, [this] { refresh(); });
}

} // namespace velmo
