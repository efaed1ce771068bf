#pragma once

#include "store/history_entry.h"

#include <optional>

namespace velmo {

class Calendar;

/// What the home page tells about the use of Velmo.
struct UsageStatistics {
    qint64 daysOfUse = 0; ///< Whole days since the first dictation, at least 1 once there was one.
    qint64 totalWords = 0;
    qint64 wordsPerMinute = 0; ///< Of the recordings on this machine whose length is known.
    double minutesSaved = 0;   ///< Against typing.

    bool operator==(const UsageStatistics &) const = default;
};

/// @param serverTotalWords the account's total, where somebody is signed in and it is known; it stands in for the
///        words of the entries.
[[nodiscard]] UsageStatistics usageStatistics(const QList<Entry> &entries, std::optional<Date> firstUseDate,
                                              std::optional<qint64> serverTotalWords, Date now,
                                              const Calendar &calendar);

/// "999", "1.0K", "12.3K", "2.5M".
[[nodiscard]] QString wordsText(qint64 words);

/// "<1 min", "12 min", "1.5h", "10h".
[[nodiscard]] QString timeSavedText(double minutes);

} // namespace velmo
