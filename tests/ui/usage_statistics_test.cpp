#include "ui/models/usage_statistics.h"

#include "base/calendar.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

Entry entry(const QString &text, std::optional<double> seconds = std::nullopt) {
    return {u"id"_s, text, Date(), seconds};
}

UsageStatistics of(const QList<Entry> &entries, std::optional<qint64> serverWords = std::nullopt) {
    const Calendar calendar({u"en_US"_s, u"UTC"_s});
    return usageStatistics(entries, std::nullopt, serverWords, Date(), calendar);
}

} // namespace

TEST(UsageStatistics, CountsWordsAndTheirPace) {
    struct Row {
        const char *name;
        QList<Entry> entries;
        std::optional<qint64> serverWords;
        qint64 words;
        qint64 perMinute;
    };
    const Row rows[] = {
        {"nothing", {}, std::nullopt, 0, 0},
        {"words without durations", {entry(u"a  b\nc"_s)}, std::nullopt, 2, 150},
        {"an empty text", {entry(u"  "_s)}, std::nullopt, 0, 0},
        {"only the server's words", {}, 7, 7, 150},
        {"truncated", {entry(u"a b c"_s, 1.0), entry(u"a b"_s, 0.9)}, std::nullopt, 5, 157},
        {"without a length or with none",
         {entry(u"a b c"_s, 60), entry(u"a"_s), entry(u"a b"_s, 0)},
         std::nullopt,
         6,
         3},
        {"the pace is of this machine", {entry(u"a b c"_s, 60)}, 4000, 4000, 3},
        {"no length to speak of", {entry(u"a"_s, 5e-324)}, std::nullopt, 1, 0},
        {"next to no length", {entry(u"a"_s, 1e-300)}, std::nullopt, 1, 1'000'000'000'000'000},
    };
    for (const Row &row : rows) {
        const UsageStatistics statistics = of(row.entries, row.serverWords);
        EXPECT_EQ(statistics.totalWords, row.words) << row.name;
        EXPECT_EQ(statistics.wordsPerMinute, row.perMinute) << row.name;
    }
}

TEST(UsageStatistics, CountsDaysOfUseFromTheFirst) {
    const Calendar calendar({u"nb_NO"_s, u"Europe/Oslo"_s});
    const Date first = Date(std::chrono::sys_days(2026y / 3 / 28)) + 11h; // the clocks go forward that night
    const auto daysAt = [&](Date now) {
        return usageStatistics({}, first, std::nullopt, now, calendar).daysOfUse;
    };
    EXPECT_EQ(of({}).daysOfUse, 0);
    EXPECT_EQ(daysAt(first), 1);
    EXPECT_EQ(daysAt(first - 72h), 1); // a corrected clock
    EXPECT_EQ(daysAt(first + 47h - 1s), 1);
    EXPECT_EQ(daysAt(first + 47h), 2);
}

TEST(UsageStatistics, WritesNumbersInShortForms) {
    const std::pair<qint64, const char *> counts[] = {
        {0, "0"},           {999, "999"},         {1000, "1.0K"},
        {12'345, "12.3K"},  {999'999, "1000.0K"}, {1'000'000, "1.0M"},
        {2'500'000, "2.5M"}};
    for (const auto &[words, text] : counts)
        EXPECT_EQ(wordsText(words).toStdString(), text);
    const std::pair<qint64, const char *> times[] = {{39, "<1 min"},  {40, "1 min"},  {2399, "59 min"},
                                                     {2400, "1.0h"},  {3600, "1.5h"}, {23'760, "9.9h"},
                                                     {24'000, "10h"}, {26'399, "10h"}};
    for (const auto &[words, text] : times)
        EXPECT_EQ(timeSavedText(of({}, words).minutesSaved).toStdString(), text) << words;
}

} // namespace velmo
