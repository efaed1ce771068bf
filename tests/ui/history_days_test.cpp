#include "ui/models/history_days.h"

#include "base/calendar.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

namespace velmo {

namespace {

QStringList described(const QList<HistoryDay> &days) {
    QStringList lines;
    for (const HistoryDay &day : days) {
        QStringList texts;
        for (const Entry &entry : day.entries)
            texts.append(entry.text);
        lines.append(day.title + u": "_s + texts.join(u' '));
    }
    return lines;
}

Entry entry(const QString &text, Date timestamp) {
    return {u"id"_s, text, timestamp, std::nullopt};
}

} // namespace

TEST(HistoryDays, GroupsByTheDaysOfTheZoneAcrossAChangeOfTheClocks) {
    const Date midnight = Date(std::chrono::sys_days(2026y / 10 / 25)) - 2h; // of a day of 25 hours in Oslo
    const QList<Entry> entries = {entry(u"e"_s, midnight + 25h + 1min),
                                  entry(u"d"_s, midnight + 25h - 1min),
                                  entry(u"c"_s, midnight),
                                  entry(u"b"_s, midnight - 1min),
                                  entry(u"stray"_s, midnight + 1h),
                                  entry(u"a"_s, midnight - 48h)};
    const Calendar oslo({u"en_US"_s, u"Europe/Oslo"_s});
    EXPECT_THAT(
        described(historyDays(entries, midnight + 25h + 2min, oslo)),
        ElementsAre(u"Today: e"_s, u"Yesterday: d c stray"_s, u"Oct 24, 2026: b"_s, u"Oct 23, 2026: a"_s));
    const Calendar utc({u"nb_NO"_s, u"UTC"_s});
    EXPECT_THAT(described(historyDays(entries, midnight + 25h + 2min, utc)),
                ElementsAre(u"Today: e d"_s, u"Yesterday: c b stray"_s, u"22. okt. 2026: a"_s));
}

} // namespace velmo
