#include "base/calendar.h"

#include <QDateTime>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

Date at(const char *isoText) {
    return Date(std::chrono::milliseconds(
        QDateTime::fromString(QString::fromLatin1(isoText), Qt::ISODateWithMs).toMSecsSinceEpoch()));
}

QString utc(Date moment) {
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(moment.time_since_epoch()).count();
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODate);
}

} // namespace

TEST(Calendar, BeginsADayWithTheFirstMomentOfTheWallClock) {
    const std::tuple<const char *, const char *, int, const char *> rows[] = {
        {"Europe/Oslo", "2026-03-29T10:00:00Z", 0,
         "2026-03-28T23:00:00Z"}, // the clocks went forward at 01:00Z
        {"Europe/Oslo", "2026-03-29T10:00:00Z", 1, "2026-03-29T22:00:00Z"},
        {"Europe/Oslo", "2026-10-25T23:30:00Z", -1, "2026-10-24T22:00:00Z"},
        {"Europe/Oslo", "2026-01-01T22:59:59.999Z", 0, "2025-12-31T23:00:00Z"},
        {"America/Havana", "2026-11-01T12:00:00Z", 0, "2026-11-01T04:00:00Z"},    // midnight comes twice
        {"America/Sao_Paulo", "2018-11-04T12:00:00Z", 0, "2018-11-04T03:00:00Z"}, // midnight is left out
    };
    for (const auto &[zone, moment, daysLater, expected] : rows) {
        const Calendar calendar({u"nb_NO"_s, QString::fromLatin1(zone)});
        EXPECT_EQ(utc(calendar.startOfDay(at(moment), daysLater)).toStdString(), expected)
            << zone << " " << moment;
    }
}

TEST(Calendar, CountsWholeDaysByTheWallClock) {
    const std::tuple<const char *, const char *, const char *, int> rows[] = {
        {"the same moment", "2026-03-28T11:00:00Z", "2026-03-28T11:00:00Z", 0},
        {"23 hours across the change in spring", "2026-03-28T11:00:00Z", "2026-03-29T10:00:00Z", 1},
        {"a second less", "2026-03-28T11:00:00Z", "2026-03-29T09:59:59Z", 0},
        {"24 hours across the change in autumn", "2026-10-24T10:00:00Z", "2026-10-25T10:00:00Z", 0},
        {"25 hours across the change in autumn", "2026-10-24T10:00:00Z", "2026-10-25T11:00:00Z", 1},
        {"a year", "2025-03-28T11:00:00Z", "2026-03-28T11:00:00Z", 365},
        {"backwards", "2026-03-28T11:00:00Z", "2026-03-26T11:00:00Z", -2},
    };
    const Calendar calendar({u"nb_NO"_s, u"Europe/Oslo"_s});
    for (const auto &[name, from, to, expected] : rows)
        EXPECT_EQ(calendar.wholeDays(at(from), at(to)), expected) << name;
}

TEST(Calendar, WritesDatesAndTimesInTheLocale) {
    const Date moment = at("2026-11-14T22:04:59Z");
    const Calendar english({u"en_US"_s, u"UTC"_s});
    const Calendar norwegian({u"nb_NO"_s, u"Asia/Tokyo"_s});
    EXPECT_EQ(english.mediumDate(moment), u"Nov 14, 2026"_s);
    EXPECT_EQ(english.timeOfDay(moment), u"22:04"_s);
    EXPECT_EQ(norwegian.mediumDate(moment), u"15. nov. 2026"_s);
    EXPECT_EQ(norwegian.timeOfDay(moment), u"07:04"_s);
}

TEST(Calendar, TellsHowLongAgoByTheLargestFullUnit) {
    const std::pair<std::chrono::seconds, const char *> rows[] = {
        {-5s, "0 sec. ago"},     {0s, "0 sec. ago"},       {59s, "59 sec. ago"}, {60s, "1 min. ago"},
        {3599s, "59 min. ago"},  {1h, "1 hr. ago"},        {24h, "1 day ago"},   {7 * 24h, "1 wk. ago"},
        {31 * 24h, "1 mo. ago"}, {366 * 24h, "1 yr. ago"},
    };
    const Calendar calendar({u"en_US"_s, u"UTC"_s});
    const Date now = at("2026-11-14T12:00:00Z");
    for (const auto &[ago, expected] : rows)
        EXPECT_EQ(calendar.timeAgo(now - ago, now).toStdString(), expected);
    const Calendar swedish({u"sv_SE"_s, u"UTC"_s});
    EXPECT_EQ(swedish.timeAgo(now - 5min, now), u"för 5 min sen"_s);
}

} // namespace velmo
