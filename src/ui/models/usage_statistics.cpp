#include "ui/models/usage_statistics.h"

#include "base/calendar.h"
#include "base/log.h"
#include "store/word_count.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

// What is shown before a single recording's length is known: an ordinary pace of speech.
constexpr qint64 kUsualWordsPerMinute = 150;
// An ordinary pace of typing.
constexpr double kTypedWordsPerMinute = 40;

qint64 daysOfUse(std::optional<Date> firstUseDate, Date now, const Calendar &calendar) {
    if (!firstUseDate)
        return 0;
    return std::max(calendar.wholeDays(*firstUseDate, now).value_or(1), 1);
}

qint64 wordsIn(const QList<Entry> &entries) {
    qint64 words = 0;
    for (const Entry &entry : entries)
        words += countWords(entry.text);
    return words;
}

/// A damaged history can hold a recording of next to no length.
qint64 truncated(double value) {
    constexpr double most = 1e15;
    return static_cast<qint64>(std::min(value, most));
}

qint64 wordsPerMinute(const QList<Entry> &entries, qint64 totalWords) {
    QList<Entry> timed = entries;
    timed.removeIf([](const Entry &entry) { return entry.durationSeconds.value_or(0) <= 0; });
    if (timed.isEmpty())
        return totalWords > 0 ? kUsualWordsPerMinute : 0;
    double seconds = 0;
    for (const Entry &entry : timed)
        seconds += *entry.durationSeconds;
    const double minutes = seconds / 60;
    return minutes > 0 ? truncated(static_cast<double>(wordsIn(timed)) / minutes) : 0;
}

} // namespace

UsageStatistics usageStatistics(const QList<Entry> &entries, std::optional<Date> firstUseDate,
                                std::optional<qint64> serverTotalWords, Date now, const Calendar &calendar) {
    UsageStatistics statistics;
    statistics.daysOfUse = daysOfUse(firstUseDate, now, calendar);
    statistics.totalWords = serverTotalWords.value_or(wordsIn(entries));
    statistics.wordsPerMinute = wordsPerMinute(entries, statistics.totalWords);
    statistics.minutesSaved = static_cast<double>(statistics.totalWords) / kTypedWordsPerMinute;
    return statistics;
}

QString wordsText(qint64 words) {
    if (words < 1000)
        return QString::number(words);
    if (words < 1'000'000)
        return fixed(static_cast<double>(words) / 1000, 1) + u'K';
    return fixed(static_cast<double>(words) / 1'000'000, 1) + u'M';
}

QString timeSavedText(double minutes) {
    if (minutes < 1)
        return u"<1 min"_s;
    if (minutes < 60)
        return QString::number(truncated(minutes)) + u" min"_s;
    const double hours = minutes / 60;
    if (hours < 10)
        return fixed(hours, 1) + u'h';
    return QString::number(truncated(hours)) + u'h';
}

} // namespace velmo
