#include "platform/linux/x11/keys/trigger_state.h"

#include "platform/linux/x11/server/server_time.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

/// Notes what is reported: "fn@10" for the key down at 10 ms, "fn+@10" with another modifier, "up@…",
/// "disabled@…". Bare presses are suppressed.
class TriggerStateTest : public ::testing::Test {
protected:
    TapAnswer report(const TapEvent &event) {
        const bool isDown = event.flags.testFlag(KeyFlag::SecondaryFunction);
        const bool isBare = event.flags == KeyFlags(KeyFlag::SecondaryFunction);
        const char *down = isBare ? "fn" : "fn+";
        const char *moved = isDown ? down : "up";
        const char *what = event.type == TapEventType::FlagsChanged ? moved : "disabled";
        reported.append(u"%1@%2"_s.arg(QLatin1StringView(what)).arg(event.time / 1ms));
        return isBare ? TapAnswer::Suppress : TapAnswer::Pass;
    }

    void expectReported(const char *expected) {
        EXPECT_EQ(reported.join(u' ').toStdString(), expected);
        reported.clear();
    }

    QStringList reported;
    TriggerState state{[this](const TapEvent &event) { return report(event); }};
};

TEST_F(TriggerStateTest, ReportsAPressOnceAndHidesItWhenAsked) {
    state.pressed({}, 10ms, 12ms);
    state.pressed({}, 20ms, 20ms); // on a second keyboard
    EXPECT_TRUE(state.hides());
    state.released(50ms);
    EXPECT_TRUE(state.hides()); // the release too
    state.released(60ms);
    expectReported("fn@10 up@50");

    state.pressed(KeyFlag::Shift, 70ms, 70ms);
    EXPECT_FALSE(state.hides());
    state.released(80ms);
    expectReported("fn+@70 up@80");
}

TEST_F(TriggerStateTest, DropsAPressThatIsReadTooLate) {
    state.pressed({}, 10ms, 1011ms);
    EXPECT_FALSE(state.hides());
    state.released(1012ms);
    expectReported("");
    state.pressed({}, 2000ms, 3000ms);
    expectReported("fn@2000");
}

TEST_F(TriggerStateTest, EndsAPressBeforeItSaysThatTheTapIsDisabled) {
    state.pressed({}, 10ms, 10ms);
    state.disabled(20ms);
    state.disabled(30ms);
    expectReported("fn@10 up@20 disabled@20 disabled@30");
}

TEST(ServerClockTest, PlacesEventsOnOurs) {
    const struct {
        const char *name;
        xcb_timestamp_t server; ///< The same moment as `local`.
        std::chrono::milliseconds local;
        xcb_timestamp_t event;
        std::chrono::milliseconds now;
        std::chrono::milliseconds expected;
    } rows[] = {{"SameClock", 1000, 1000ms, 5000, 5020ms, 5000ms},
                {"SameClockButTheAnswerWasSlow", 1000, 1400ms, 5000, 5020ms, 5000ms},
                {"ReadTooEarlyByRounding", 1000, 1000ms, 5003, 5000ms, 5000ms},
                {"AnotherClock", 900'000, 1000ms, 904'000, 5020ms, 5000ms},
                {"StartsAgain", 4'294'967'000, 4'294'967'000ms, 4, 4'294'967'500ms, 4'294'967'300ms},
                {"HoursLate", 1000, 1000ms, 5000, 7'205'000ms, 5000ms}};
    for (const auto &row : rows)
        EXPECT_EQ(ServerClock(row.server, row.local).toUptime(row.event, row.now), row.expected) << row.name;
}

} // namespace

} // namespace velmo::x11
