#include "dictation/gestures/hotkey_listener.h"

#include "dictation/gestures/checked_tap.h"
#include "dictation/gestures/trigger_fakes.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

struct Keyboard {
    Keyboard() {
        listener.onStartRecording = [this] { calls.append(u"start"_s); };
        listener.onStopRecording = [this] { calls.append(u"stop"_s); };
        listener.onPermissionStatusChanged = [this](bool granted) {
            calls.append(granted ? u"granted"_s : u"refused"_s);
        };
        listener.onPress = [this](std::chrono::nanoseconds) { calls.append(u"press"_s); };
        listener.onPressDropped = [this] { calls.append(u"drop"_s); };
        listener.isSessionLocked = [this] { return isLocked; };
    }

    void listen() {
        listener.setupFnKey();
        listener.registerFallbackHotkey();
        calls.clear();
        log.clear();
    }

    /// Reports an event that happened `ago`; the main queue has not got to it yet.
    void report(TapEventType type, KeyFlags flags, std::chrono::nanoseconds ago = 0ns) {
        (void)tap.handler({type, flags, queue.uptime() - ago});
    }
    void press(std::chrono::nanoseconds ago = 0ns) {
        report(TapEventType::FlagsChanged, KeyFlag::SecondaryFunction, ago);
    }
    void release(std::chrono::nanoseconds ago = 0ns) { report(TapEventType::FlagsChanged, {}, ago); }

    /// Words of a script: "down" and "up" of the trigger key, "other" key or button, "hotkey", "ended" (the
    /// recording, by another way), "locked" and "unlocked" (the session), or milliseconds that pass.
    void perform(const QString &script) {
        for (const QString &step : script.split(u' ')) {
            if (step == u"down")
                press();
            else if (step == u"up")
                release();
            else if (step == u"other")
                report(TapEventType::OtherPressed, {});
            else if (step == u"hotkey")
                hotkey.pressed();
            else if (step == u"ended")
                listener.recordingEnded();
            else if (step.endsWith(u"locked"))
                isLocked = step == u"locked";
            else
                queue.advance(std::chrono::milliseconds(step.toInt()));
            queue.runPosted();
        }
    }

    testing::LogCapture log;
    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    testing::FakeAccessibilityPermission permission;
    testing::FakeEventTap tap;
    testing::CheckedTap checkedTap{tap};
    testing::FakeGlobalHotkey hotkey;
    testing::FakeKeyboardKeys keys;
    QStringList calls;
    bool isLocked = false;
    HotkeyListener listener{{queue, preferences, permission, checkedTap, hotkey, keys}};
};

class HotkeyListenerTest : public ::testing::Test, protected Keyboard {};

struct Gesture {
    const char *name;
    const char *script;
    const char *calls;
    RecordingMode mode;
};

/// Each on a keyboard of its own.
void expectGestures(std::initializer_list<Gesture> gestures) {
    for (const Gesture &gesture : gestures) {
        Keyboard keyboard;
        keyboard.listen();
        keyboard.perform(QLatin1StringView(gesture.script));
        EXPECT_EQ(keyboard.calls.join(u' '), QLatin1StringView(gesture.calls)) << gesture.name;
        EXPECT_EQ(keyboard.listener.recordingMode(), gesture.mode) << gesture.name;
    }
}

constexpr auto kNone = RecordingMode::none;
constexpr auto kPushToTalk = RecordingMode::pushToTalk;
constexpr auto kHandsFree = RecordingMode::handsFree;

TEST(Gestures, PushToTalk) {
    expectGestures({{"NotYet", "down 299", "press", kNone},
                    {"Begins", "down 300", "press start", kPushToTalk},
                    {"Ends", "down 1200 up", "press start stop drop", kNone},
                    {"ReleasedJustBefore", "down 299 up 1 300", "press", kNone}});
}

TEST(Gestures, DoubleTap) {
    expectGestures({

        {"Begins", "down 100 up 200 down 100 up", "press press start", kHandsFree},
        {"FirstPressMayBeAsLongAsATap", "down 299 up 51 down 49 up", "press press start", kHandsFree},
        {"ReleasesAlmostTooFarApart", "down 100 up 299 down 100 up", "press press start", kHandsFree},
        {"ReleasesTooFarApart", "down 100 up 300 down 100 up", "press press", kNone},
        {"TooLateIsAFirstTapAgain", "down 100 up 350 down 100 up 100 down 100 up", "press press press start",
         kHandsFree},
        {"ContactBounces", "down 100 up 40 down 10 up", "press press", kNone},
        {"ShortestGap", "down 100 up 41 down 10 up", "press press start", kHandsFree},
        {"SecondPressHeldIsPushToTalk", "down 100 up 50 down 300", "press press start", kPushToTalk},
        {"OneTapIsNothing", "down 100 up 399", "press", kNone},
        {"OneTapIsDroppedWhenNoSecondCanCome", "down 100 up 400", "press drop", kNone},
        {"GoesOnWhileTheNextPressIsHeld", "down 100 up 100 down 100 up 5000 down 2000", "press press start",
         kHandsFree},
        {"EndsWithTheNextRelease", "down 100 up 100 down 100 up 5000 down 2000 up",
         "press press start stop drop", kNone},
        {"NextTapAfterTheEndIsAFirstOne", "down 100 up 100 down 100 up 100 down 50 up 100 down 50 up",
         "press press start stop drop press", kNone},
    });
}

TEST(Gestures, Combination) {
    expectGestures({{"ForgetsThePress", "down 100 other 500 up", "press drop", kNone},
                    {"IsNoTap", "down 100 other 50 up 100 down 50 up", "press drop press", kNone},
                    {"ForgetsTheTapBefore", "down 50 up 50 down 20 other 20 up 50 down 50 up",
                     "press press drop press", kNone},
                    {"LeavesPushToTalkAlone", "down 300 other 500 up", "press start stop drop", kNone},
                    {"LeavesHandsFreeAlone", "hotkey down 20 other 20 up", "start stop", kNone}});
}

TEST(Gestures, FallbackHotkey) {
    expectGestures({{"Begins", "hotkey", "start", kHandsFree},
                    {"Ends", "hotkey 1000 hotkey", "start stop", kNone},
                    {"EndsPushToTalk", "down 300 hotkey 100 up 1000", "press start stop drop", kNone},
                    {"EndedByATap", "hotkey 1000 down 100 up", "start stop", kNone},
                    {"BeginsAfterATap", "down 100 up 100 hotkey 1000", "press start", kHandsFree}});
}

TEST(Gestures, RecordingEnded) {
    expectGestures({
        {"NextHotkeyBegins", "hotkey 1000 ended hotkey", "start start", kHandsFree},
        {"NextPressBegins", "hotkey 1000 ended down 300", "start press start", kPushToTalk},
        {"ReleaseOfTheOldPressIsNothing", "down 300 ended 100 up 50 down 50 up", "press start drop press",
         kNone},
        {"NorIsItATapWhenItWasShort", "hotkey down 20 ended 20 up 100 down 50 up", "start press", kNone},
        {"KeepsAPressMadeSince", "down 300 up down 10 ended 290", "press start stop drop press start",
         kPushToTalk},
    });
}

TEST(Gestures, SessionLock) {
    expectGestures({{"KeysBeginNothing", "locked down 500 up 50 down 50 up 50 hotkey", "", kNone},
                    {"ReleaseAfterItIsNothing", "locked down unlocked 500 up", "", kNone},
                    {"KeysEndWhatRuns", "down 300 locked up hotkey", "press start stop drop", kNone},
                    {"HotkeyEndsWhatRuns", "hotkey locked hotkey", "start stop", kNone}});
}

TEST_F(HotkeyListenerTest, SaysWhatTheGesturesDo) {
    listen();
    perform(u"down 1200 up 1000 down 100 up 200 down 100 up 1000 down 100 up"_s);
    EXPECT_EQ(log.lines(), (QStringList{u"🎙️ [Hotkey] Push-to-talk started (held Fn)"_s,
                                        u"🎙️ [Hotkey] Push-to-talk stopped (released Fn after 1.2s)"_s,
                                        u"🎙️ [Hotkey] Double-tap Fn → hands-free recording started"_s,
                                        u"🎙️ [Hotkey] Fn pressed — will stop hands-free on release"_s,
                                        u"🎙️ [Hotkey] Hands-free stopped (tapped Fn)"_s}));
}

TEST_F(HotkeyListenerTest, CountsFromWhenKeysMovedNotFromWhenItHeardOfIt) {
    listen();
    press(250ms);
    perform(u"49"_s);
    EXPECT_EQ(listener.recordingMode(), kNone);
    perform(u"1"_s);
    EXPECT_EQ(listener.recordingMode(), kPushToTalk);
    perform(u"up"_s);
    calls.clear();

    press(900ms); // two taps that waited in the queue
    release(800ms);
    press(600ms);
    release(500ms);
    queue.runPosted();
    EXPECT_EQ(listener.recordingMode(), kHandsFree);
    perform(u"hotkey"_s);
    calls.clear();

    press(400ms); // held for 0.3 s, but released by now: neither a tap nor a recording
    release(100ms);
    queue.runPosted();
    EXPECT_EQ(calls.join(u' '), u"press drop"_s);
}

TEST_F(HotkeyListenerTest, WaitsForThePermissionAndThenWatchesTheKeyOnce) {
    permission.trusted = false;
    listener.setupFnKey();
    EXPECT_FALSE(listener.isUsingFnHotkey());
    permission.trusted = true;
    tap.canStart = false;
    listener.setupFnKey();
    EXPECT_FALSE(listener.isUsingFnHotkey());
    tap.canStart = true;
    listener.setupFnKey();
    listener.setupFnKey();
    EXPECT_TRUE(listener.isUsingFnHotkey());
    EXPECT_EQ(calls, QStringList{u"granted"_s});
    EXPECT_EQ(log.lines().count(u"🎙️ [Hotkey] No Accessibility permission yet — Fn key unavailable"_s),
              1);
    EXPECT_EQ(log.lines().count(u"🎙️ [Hotkey] Failed to create Fn key event tap"_s), 1);
    EXPECT_EQ(log.lines().count(u"🎙️ [Hotkey] Fn key event tap active (in-process)"_s), 1);
}

TEST_F(HotkeyListenerTest, RegistersTheFallbackOnceItCan) {
    hotkey.failure = 10;
    listener.registerFallbackHotkey();
    hotkey.failure = 0;
    listener.registerFallbackHotkey();
    listener.registerFallbackHotkey();
    EXPECT_EQ(hotkey.registrations, 2);
    EXPECT_TRUE(log.contains(u"🎙️ [Hotkey] Failed to register Carbon hotkey: 10"_s));
}

TEST_F(HotkeyListenerTest, GivesEverythingBack) {
    listen();
    perform(u"down 100"_s);
    listener.stopListening();
    queue.advance(1s);
    EXPECT_EQ(calls.join(u' '), u"press drop"_s);
    EXPECT_TRUE(tap.key.isNull());
    EXPECT_FALSE(hotkey.pressed);
    EXPECT_FALSE(listener.isUsingFnHotkey());
    EXPECT_EQ(queue.pendingTimers(), 0U);
}

TEST_F(HotkeyListenerTest, WatchesTheChosenKey) {
    listen();
    EXPECT_EQ(tap.key, u"RCTL"_s);
    preferences.set(keys::triggerKey, u"FK13"_s);
    listener.triggerKeyChanged();
    EXPECT_EQ(tap.key, u"FK13"_s);
    preferences.set(keys::triggerKey, u"AC01"_s); // a letter, stored by hand
    listener.triggerKeyChanged();
    EXPECT_EQ(tap.key, u"RCTL"_s);
}

TEST_F(HotkeyListenerTest, LeavesTheKeyToTheWindowsWhileAnotherIsChosen) {
    listen();
    perform(u"down 100"_s);
    listener.pauseFnKey();
    EXPECT_TRUE(tap.key.isNull());
    EXPECT_TRUE(listener.isUsingFnHotkey());
    listener.setupFnKey(); // the popover and onboarding ask for it again and again
    EXPECT_TRUE(tap.key.isNull());
    preferences.set(keys::triggerKey, u"FK13"_s);
    listener.triggerKeyChanged();
    listener.resumeFnKey();
    EXPECT_EQ(tap.key, u"FK13"_s);
    perform(u"1000 down 400 up"_s);
    EXPECT_EQ(calls.join(u' '), u"press drop granted press start stop drop"_s);

    perform(u"hotkey"_s);
    listener.pauseFnKey();
    listener.resumeFnKey();
    calls.clear();
    perform(u"1000 down 100 up"_s); // ends what went on meanwhile
    EXPECT_EQ(calls.join(u' '), u"stop"_s);

    listener.pauseFnKey();
    tap.canStart = false; // a keyboard without the chosen key
    listener.resumeFnKey();
    EXPECT_FALSE(listener.isUsingFnHotkey());
}

} // namespace

} // namespace velmo
