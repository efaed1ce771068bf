#include "dictation/gestures/checked_tap.h"
#include "dictation/gestures/fn_key_interceptor.h"
#include "platform/linux/x11/key_stage.h"
#include "platform/linux/x11/x11_input.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"
#include "support/xvfb.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using testing::waitUntil;
namespace key = testing::key;

/// The interceptor on a real display. The main queue runs only while the test waits for its calls, so all
/// else goes on as when the main thread hangs.
class TriggerTapTest : public ::testing::Test {
protected:
    ~TriggerTapTest() override { interceptor.reset(); }

    void startTap(const QString &guardProgram = QStringLiteral(VELMO_KEY_GUARD)) {
        input = makeX11Input(queue, {server.display(), guardProgram});
        tap = std::make_unique<testing::CheckedTap>(*input.tap);
        interceptor = std::make_unique<FnKeyInterceptor>(*tap, queue, u"RCTL"_s);
        interceptor->onFnDown = [this](std::chrono::nanoseconds) { calls.append(u"down"_s); };
        interceptor->onFnUp = [this](std::chrono::nanoseconds) { calls.append(u"up"_s); };
        interceptor->onCombinationUsed = [this] { calls.append(u"combination"_s); };
        ASSERT_TRUE(interceptor->start());
    }

    void startHidingTap() {
        startTap();
        int taps = 0;
        ASSERT_TRUE(waitUntil([&] {
            ++taps;
            return isHidden();
        }));
        ASSERT_TRUE(waitUntil([&] {
            queue.runPosted();
            return calls.size() == 2 * taps;
        }));
        forget();
    }

    /// Types the trigger key and a letter, and looks at what the application sees before that letter.
    bool isHidden() {
        application.forget();
        hands.tap(key::rightControl);
        hands.tap(key::letterX);
        EXPECT_TRUE(applicationSees(u"-53"));
        return application.seen() == QStringList({u"+53"_s, u"-53"_s});
    }

    bool applicationSees(QStringView what) {
        return waitUntil([&] { return application.seen().contains(what); });
    }

    void expectSeen(const QString &expected) {
        EXPECT_EQ(application.seen().join(u' ').toStdString(), expected.toStdString());
    }

    /// Waits for the last of the calls and compares all of them.
    void expectCalls(const QString &expected) {
        EXPECT_TRUE(waitUntil([&] {
            queue.runPosted();
            return calls.join(u' ').size() >= expected.size();
        }));
        EXPECT_EQ(calls.join(u' ').toStdString(), expected.toStdString());
    }

    void forget() {
        queue.runPosted();
        calls.clear();
        application.forget();
    }

    testing::Xvfb server;
    testing::Hands hands{server.display()};
    testing::OtherApplication application{server.display()};
    testing::LogCapture log;
    testing::ManualMainQueue queue;
    QStringList calls;
    X11Input input;
    std::unique_ptr<testing::CheckedTap> tap;
    std::unique_ptr<FnKeyInterceptor> interceptor;
};

TEST_F(TriggerTapTest, KeepsABarePressFromOthersAndReportsIt) {
    startHidingTap();
    hands.press(key::rightControl);
    expectCalls(u"down"_s);
    hands.release(key::rightControl);
    expectCalls(u"down up"_s);
    hands.tap(key::letterX);
    EXPECT_TRUE(applicationSees(u"-53"));
    expectSeen(u"+53 -53"_s);
}

TEST_F(TriggerTapTest, LetsCombinationsReachTheApplication) {
    startHidingTap();
    hands.chord({key::rightControl, key::letterC});
    EXPECT_TRUE(applicationSees(u"-105"));
    expectSeen(u"control+54 -54 -105"_s);
    expectCalls(u"down combination up"_s);
}

TEST_F(TriggerTapTest, TakesAClickForACombination) {
    startHidingTap();
    hands.press(key::rightControl);
    hands.click({600, 300});
    hands.release(key::rightControl);
    expectCalls(u"down combination up"_s);
}

TEST_F(TriggerTapTest, LeavesAPressWithAnotherModifierAlone) {
    startHidingTap();
    hands.chord({key::leftControl, key::rightControl});
    EXPECT_TRUE(applicationSees(u"-37"));
    expectSeen(u"+37 control+105 -105 -37"_s);
    hands.tap(key::rightControl); // forgotten, not stuck
    expectCalls(u"down up"_s);
}

TEST_F(TriggerTapTest, ReportsTheReleaseWhateverElseIsHeldByThen) {
    startHidingTap();
    hands.press(key::rightControl);
    hands.press(key::leftShift);
    hands.release(key::rightControl);
    expectCalls(u"down combination up"_s);
    hands.release(key::leftShift);
}

TEST_F(TriggerTapTest, DeliversTheReleaseOfAKeyHeldBefore) {
    startHidingTap();
    hands.press(key::letterC);
    hands.press(key::rightControl);
    hands.release(key::letterC);
    EXPECT_TRUE(applicationSees(u"-54"));
    hands.release(key::rightControl);
    expectCalls(u"down up"_s);
}

TEST_F(TriggerTapTest, IgnoresWhatProgramsInject) {
    startHidingTap();
    hands.pressAsProgram(key::rightControl);
    hands.releaseAsProgram(key::rightControl);
    EXPECT_TRUE(applicationSees(u"-105"));
    // The server has counted the key as held by the time it passes the press on.
    expectSeen(u"control+105 -105"_s);

    hands.press(key::rightControl); // for the next dictation, while the text of the last one is pasted
    hands.pressAsProgram(key::letterC);
    hands.releaseAsProgram(key::letterC);
    EXPECT_TRUE(applicationSees(u"-54"));
    hands.release(key::rightControl);
    expectCalls(u"down up"_s);
}

TEST_F(TriggerTapTest, ObservesAKeyThatAnotherApplicationHasUntilItLetsGo) {
    application.grabKey(key::rightControl);
    startTap();
    const QString taken =
        u"🎙️ [Hotkey] Trigger key is grabbed by another application, so other applications see "
        u"it too"_s;
    EXPECT_TRUE(waitUntil([&] {
        queue.runPosted();
        return log.contains(taken);
    }));
    hands.tap(key::rightControl);
    expectCalls(u"down up"_s);
    EXPECT_TRUE(applicationSees(u"-105"));

    application.ungrabKey(key::rightControl);
    EXPECT_TRUE(waitUntil([this] { return isHidden(); }));
    queue.runPosted();
    EXPECT_EQ(
        log.lines().mid(1),
        QStringList({taken, u"🎙️ [Hotkey] Trigger key is hidden from other applications again"_s}));
}

TEST_F(TriggerTapTest, HearsTheKeyWhileAMenuHoldsTheKeyboard) {
    startHidingTap();
    application.grabKeyboard();
    hands.tap(key::rightControl);
    expectCalls(u"down up"_s);
}

TEST_F(TriggerTapTest, EndsAPressWhenTheKeyboardIsUnplugged) {
    startHidingTap();
    hands.press(key::rightControl);
    expectCalls(u"down"_s);
    hands.unplugKeyboard();
    expectCalls(u"down up"_s);
    hands.release(key::rightControl);
    hands.plugKeyboardIn();
    forget();
    hands.tap(key::rightControl);
    expectCalls(u"down up"_s);
}

TEST_F(TriggerTapTest, GivesTheKeyBack) {
    startHidingTap();
    hands.press(key::rightControl);
    interceptor.reset();
    hands.tap(key::letterX);
    EXPECT_TRUE(applicationSees(u"-53"));
    hands.release(key::rightControl);
    application.forget();
    hands.tap(key::rightControl);
    EXPECT_TRUE(applicationSees(u"-105"));
    EXPECT_TRUE(application.seen().contains(u"+105"));
}

TEST_F(TriggerTapTest, FollowsTheKeyWhenKeysAreNumberedAnew) {
    constexpr uint8_t kRightControl = 109;
    startHidingTap();
    hands.press(key::rightControl);
    expectCalls(u"down"_s);
    server.start(u"setxkbmap"_s, {u"us"_s, u"-keycodes"_s, u"xfree86"_s})->outputUntilEnd();
    expectCalls(u"down up"_s);
    hands.release(key::rightControl);
    forget();
    hands.tap(kRightControl);
    expectCalls(u"down up"_s);
}

struct NoGuard {
    const char *name;
    const char *program;
};
void PrintTo(const NoGuard &guard, std::ostream *out) {
    *out << guard.name;
}

class TriggerTapWithoutGuard : public TriggerTapTest, public ::testing::WithParamInterface<NoGuard> {};

TEST_P(TriggerTapWithoutGuard, OnlyObserves) {
    startTap(QString::fromLatin1(GetParam().program));
    EXPECT_TRUE(waitUntil([this] {
        queue.runPosted();
        return log.contains(
            u"🎙️ [Hotkey] Key guard does not run, so other applications see the trigger key too"_s);
    }));
    hands.tap(key::rightControl);
    EXPECT_TRUE(applicationSees(u"-105"));
    EXPECT_TRUE(application.seen().contains(u"+105"));
    expectCalls(u"down up"_s);
}

INSTANTIATE_TEST_SUITE_P(Programs, TriggerTapWithoutGuard,
                         ::testing::Values(NoGuard{"Missing", "/nonexistent/guard"},
                                           NoGuard{"EndsAtOnce", "/bin/true"}),
                         [](const auto &info) { return info.param.name; });

TEST(TriggerTap, EndsInPeaceWhenTheDisplayGoesAway) {
    testing::ManualMainQueue queue;
    auto server = std::make_unique<testing::Xvfb>();
    const X11Input input = makeX11Input(queue, {server->display(), QStringLiteral(VELMO_KEY_GUARD)});
    ASSERT_TRUE(input.tap->start(u"RCTL"_s, [](const TapEvent &) { return TapAnswer::Suppress; }));
    server.reset();
    input.tap->stop();
}

} // namespace

} // namespace velmo
