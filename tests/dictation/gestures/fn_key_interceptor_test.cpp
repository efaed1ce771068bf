#include "dictation/gestures/fn_key_interceptor.h"

#include "dictation/gestures/trigger_fakes.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

class FnKeyInterceptorTest : public ::testing::Test {
protected:
    FnKeyInterceptorTest() { create(); }

    void create() {
        interceptor = std::make_unique<FnKeyInterceptor>(tap, queue, u"RCTL"_s);
        interceptor->onFnDown = [this](std::chrono::nanoseconds at) { record("down", at); };
        interceptor->onFnUp = [this](std::chrono::nanoseconds at) { record("up", at); };
        interceptor->onCombinationUsed = [this] { calls.append(u"combination"_s); };
    }

    void record(const char *what, std::chrono::nanoseconds at) {
        calls.append(u"%1@%2"_s.arg(QLatin1StringView(what)).arg(at / 1ms));
    }

    testing::LogCapture log;
    testing::ManualMainQueue queue;
    testing::FakeEventTap tap;
    QStringList calls;
    std::unique_ptr<FnKeyInterceptor> interceptor;
};

TapEvent flags(int atMs, KeyFlags flags) {
    return {TapEventType::FlagsChanged, flags, std::chrono::milliseconds(atMs)};
}
TapEvent other(int atMs) {
    return {TapEventType::OtherPressed, {}, std::chrono::milliseconds(atMs)};
}

constexpr auto kPass = TapAnswer::Pass;
constexpr auto kSuppress = TapAnswer::Suppress;
constexpr auto kFn = KeyFlag::SecondaryFunction;

TEST_F(FnKeyInterceptorTest, AnswersAndReportsEvents) {
    struct Row {
        const char *name;
        std::vector<TapEvent> events; ///< Times in milliseconds.
        std::vector<TapAnswer> answers;
        const char *calls; ///< Separated by spaces.
    };
    const Row rows[] = {

        {"BarePress", {flags(10, kFn), flags(110, {})}, {kSuppress, kSuppress}, "down@10 up@110"},
        {"CapsLockIsNoModifier",
         {flags(10, kFn | KeyFlag::CapsLock), flags(110, KeyFlag::CapsLock)},
         {kSuppress, kSuppress},
         "down@10 up@110"},
        {"RepeatedDownPasses",
         {flags(10, kFn), flags(40, kFn), flags(110, {})},
         {kSuppress, kPass, kSuppress},
         "down@10 up@110"},
        {"UpAlonePasses", {flags(10, {})}, {kPass}, ""},
        {"WithShift", {flags(10, kFn | KeyFlag::Shift), flags(20, {})}, {kPass, kPass}, ""},
        {"WithControl", {flags(10, kFn | KeyFlag::Control), flags(20, {})}, {kPass, kPass}, ""},
        {"WithOption", {flags(10, kFn | KeyFlag::Option), flags(20, {})}, {kPass, kPass}, ""},
        {"WithCommand", {flags(10, kFn | KeyFlag::Command), flags(20, {})}, {kPass, kPass}, ""},
        {"AnotherModifierForgetsThePressInSilence",
         {flags(10, kFn), flags(20, kFn | KeyFlag::Shift), flags(30, {})},
         {kSuppress, kPass, kPass},
         "down@10"},
        {"OtherKeyWhileHeld",
         {flags(10, kFn), other(20), flags(30, {})},
         {kSuppress, kPass, kSuppress},
         "down@10 combination up@30"},
        {"OtherKeyAlone", {other(20)}, {kPass}, ""},
    };
    for (const Row &row : rows) {
        create();
        calls.clear();
        std::vector<TapAnswer> answers;
        for (const TapEvent &event : row.events)
            answers.push_back(interceptor->handleEvent(event));
        EXPECT_EQ(answers, row.answers) << row.name;
        EXPECT_EQ(calls, QStringList()) << "the tap's thread calls nobody back: " << row.name;
        queue.runPosted();
        EXPECT_EQ(calls.join(u' '), QLatin1StringView(row.calls)) << row.name;
    }
}

TEST_F(FnKeyInterceptorTest, TakesTheTapBackWhenItWasDisabled) {
    for (const auto type : {TapEventType::DisabledByTimeout, TapEventType::DisabledByUserInput})
        EXPECT_EQ(interceptor->handleEvent({type, {}, 0ns}), TapAnswer::Pass);
    EXPECT_EQ(tap.enabled, 2);
}

TEST_F(FnKeyInterceptorTest, StartsTheTapForItsKeyAndEndsItWithItself) {
    EXPECT_TRUE(interceptor->start());
    EXPECT_EQ(tap.key, u"RCTL"_s);
    EXPECT_EQ(tap.handler(flags(10, kFn)), TapAnswer::Suppress);
    interceptor.reset();
    EXPECT_TRUE(tap.key.isNull());
    queue.runPosted(); // what was under way finds nobody
    EXPECT_EQ(calls, QStringList());

    tap.canStart = false;
    create();
    EXPECT_FALSE(interceptor->start());
    EXPECT_EQ(log.lines(), (QStringList{u"🎙️ [FnKey] Event tap active — bare Fn suppression enabled"_s,
                                        u"🎙️ [FnKey] Failed to create event tap"_s}));
}

} // namespace

} // namespace velmo
