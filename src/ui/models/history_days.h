#pragma once

#include "store/history_entry.h"

namespace velmo {

class Calendar;

/// The dictations of one day, as the history list heads them.
struct HistoryDay {
    QString title;        ///< "Today", "Yesterday" or the date.
    QList<Entry> entries; ///< In the order of the history.
};

/// The history by days of the calendar, latest first.
[[nodiscard]] QList<HistoryDay> historyDays(const QList<Entry> &entries, Date now, const Calendar &calendar);

} // namespace velmo
