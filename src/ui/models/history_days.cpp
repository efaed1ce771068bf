#include "ui/models/history_days.h"

#include "base/calendar.h"

#include <QCoreApplication>
#include <map>

namespace velmo {

namespace {

QString titleOf(Date day, Date now, const Calendar &calendar) {
    if (day == calendar.startOfDay(now))
        return QCoreApplication::translate("HistoryDays", "Today");
    if (day == calendar.startOfDay(now, -1))
        return QCoreApplication::translate("HistoryDays", "Yesterday");
    return calendar.mediumDate(day);
}

} // namespace

QList<HistoryDay> historyDays(const QList<Entry> &entries, Date now, const Calendar &calendar) {
    std::map<Date, QList<Entry>, std::greater<>> byDay;
    for (const Entry &entry : entries)
        byDay[calendar.startOfDay(entry.timestamp)].append(entry);
    QList<HistoryDay> days;
    for (auto &[day, itsEntries] : byDay)
        days.append({titleOf(day, now, calendar), std::move(itsEntries)});
    return days;
}

} // namespace velmo
