#include "app/desktop/app_delegate.h"

#include "app/desktop/user_interface.h"
#include "dictation/capture/recorder.h"
#include "dictation/gestures/hotkey_listener.h"
#include "dictation/gestures/trigger_fakes.h"
#include "dictation/session/dictation_fakes.h"
#include "dictation/session/recording_manager.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

struct ActivatedWorkspace final : Workspace {
    ActivationHandler activated;
    [[nodiscard]] std::optional<QString> frontmostApplicationName() const override { return std::nullopt; }
    void setActivationHandler(ActivationHandler handler) override { activated = std::move(handler); }
};

struct FakeSynchronisation final : Synchronisation {
    int syncs = 0;
    std::optional<Date> last;
    void syncAll() override { ++syncs; }
    [[nodiscard]] std::optional<Date> lastSyncDate() const override { return last; }
};

struct FakeArmedCapture final : ArmedCapture {
    bool armed = false;
    void press(std::chrono::nanoseconds) override { armed = true; }
    void drop() override { armed = false; }
};

/// Remembers what it was asked to show.
struct FakeInterface final : UserInterface {
    std::function<void()> pressStatusItem;
    QStringList shown;

    void showStatusItem(std::function<void()> pressed) override {
        shown.append(u"status item"_s);
        pressStatusItem = std::move(pressed);
    }
    void updateStatusIcon(State state) override { shown.append(nameOf(state)); }
    void togglePopover() override { shown.append(u"popover"_s); }
    void closePopover() override { shown.append(u"popover closed"_s); }
    void showOverlay() override { shown.append(u"overlay"_s); }
    void showMainWindow() override { shown.append(u"main window"_s); }
    void showOnboarding() override { shown.append(u"onboarding"_s); }
};

class AppDelegateTest : public ::testing::Test {
protected:
    testing::LogCapture log;
    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    MemoryPreferences keyboardPreferences;
    testing::FakeMicrophonePermission microphone;
    ActivatedWorkspace workspace;
    testing::FakeSounds sounds;
    testing::FakeRecorder recorder;
    testing::FakeTranscriber transcriber;
    testing::FakeTextProcessing processor;
    testing::FakeInsertion insertion;
    testing::FakeLevelMonitor levels;
    testing::FakeOverlay overlay;
    testing::FakeHistory history;
    testing::FakeAccount account;
    FakeSynchronisation synchronisation;
    FakeArmedCapture armedCapture;
    testing::FakeAccessibilityPermission permission;
    testing::FakeEventTap tap;
    testing::FakeGlobalHotkey hotkey;
    FakeInterface interface;
    RecordingManager manager{{queue, preferences, microphone, workspace, sounds, recorder, transcriber,
                              processor, insertion, levels, overlay, history, account, account}};
    HotkeyListener listener{{queue, preferences, permission, tap, hotkey}};
    AppDelegate delegate{{queue, preferences, keyboardPreferences, manager, listener, armedCapture, workspace,
                          account, synchronisation, permission, interface}};
};

TEST_F(AppDelegateTest, ShowsWhatVelmoDoes) {
    preferences.set(keys::onboardingComplete, true);
    delegate.applicationDidFinishLaunching();
    hotkey.pressed();
    queue.runPosted();
    hotkey.pressed();
    queue.runPosted();
    manager.cancelRecording();
    interface.pressStatusItem();
    delegate.openMainWindow();
    EXPECT_TRUE(delegate.applicationShouldHandleReopen());
    EXPECT_EQ(interface.shown.join(u' '),
              u"status item overlay recording idle popover popover closed main window main window"_s);
}

TEST_F(AppDelegateTest, ShowsOnboardingUntilAllIsThereThatDictationNeeds) {
    for (const bool isComplete : {false, true}) {
        for (const bool isTrusted : {false, true}) {
            interface.shown.clear();
            preferences.set(keys::onboardingComplete, isComplete);
            permission.trusted = isTrusted;
            delegate.applicationDidFinishLaunching();
            EXPECT_EQ(interface.shown.contains(u"onboarding"_s), !isComplete || !isTrusted)
                << isComplete << isTrusted;
        }
    }
    permission.trusted = false;
    preferences.set(keys::keylessSetupComplete, true);
    interface.shown.clear();
    delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(interface.shown.contains(u"onboarding"_s)) << "it has been said";
}

TEST_F(AppDelegateTest, LaunchesInOrderAndGivesBackWhatItTook) {
    keyboardPreferences.set(u"AppleFnUsageType"_s, qint64(1));
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(keyboardPreferences.integer(u"AppleFnUsageType"_s), 0);
    delegate.applicationWillTerminate();

    EXPECT_EQ(log.lines(),
              (QStringList{
                  u"🎙️ [Velmo Mac] Emoji picker disabled (was: 1, now: 0)"_s,
                  u"🎙️ [FnKey] Event tap active — bare Fn suppression enabled"_s,
                  u"🎙️ [Hotkey] Fn key event tap active (in-process)"_s,
                  u"🎙️ [Hotkey] Fallback hotkey registered: Ctrl+Shift+A (toggle)"_s,
                  u"🔄 [Velmo Mac] Auto-syncing on launch..."_s,
                  u"🎙️ [Velmo Mac] Ready — hold Fn (push-to-talk) or double-tap Fn (hands-free)"_s,
                  u"🎙️ [Velmo Mac] Emoji picker restored (value: 1)"_s,
              }));
    EXPECT_EQ(synchronisation.syncs, 1);
    EXPECT_EQ(keyboardPreferences.integer(u"AppleFnUsageType"_s), 1);
    EXPECT_TRUE(tap.key.isNull());
    EXPECT_FALSE(hotkey.pressed);
    EXPECT_FALSE(workspace.activated);
}

TEST_F(AppDelegateTest, SynchronisesOnActivationAtMostEveryThirtySeconds) {
    delegate.applicationDidFinishLaunching();
    workspace.activated(false);
    EXPECT_EQ(synchronisation.syncs, 1);
    workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 2);
    synchronisation.last = queue.now() - 29s;
    workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 2);
    queue.advance(1s);
    workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 3);
    account.loggedIn = false;
    queue.advance(60s);
    workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 3);
}

TEST_F(AppDelegateTest, LetsTheTriggerStopWhatTheMouseBegan) {
    delegate.applicationDidFinishLaunching();
    const std::pair<const char *, std::function<void()>> ways[] = {
        {"hot key", [this] { hotkey.pressed(); }},
        {"tap", [this] { listener.fnDown(queue.uptime()), listener.fnUp(queue.uptime()); }},
    };
    for (const auto &[name, stop] : ways) {
        manager.startRecording();
        queue.advance(1s);
        stop();
        queue.runPosted();
        EXPECT_EQ(manager.state(), State::transcribing) << name;
        transcriber.complete(failed(TranscriptionError::timeout()));
        queue.runPosted();
    }
}

TEST_F(AppDelegateTest, FreesTheTriggerHoweverARecordingEnds) {
    delegate.applicationDidFinishLaunching();
    hotkey.pressed();
    queue.runPosted();
    EXPECT_EQ(manager.state(), State::recording);
    EXPECT_EQ(listener.recordingMode(), RecordingMode::handsFree);
    manager.cancelRecording();
    queue.runPosted();
    EXPECT_EQ(listener.recordingMode(), RecordingMode::none);

    recorder.failure = u"No microphone found."_s;
    hotkey.pressed();
    queue.runPosted();
    EXPECT_EQ(listener.recordingMode(), RecordingMode::none);

    recorder.failure.reset();
    hotkey.pressed();
    queue.advance(1s);
    hotkey.pressed();
    queue.runPosted();
    EXPECT_EQ(manager.state(), State::transcribing);
    hotkey.pressed(); // refused: the last dictation is not done
    queue.runPosted();
    EXPECT_EQ(listener.recordingMode(), RecordingMode::none);
}

TEST_F(AppDelegateTest, ListensFromThePressOfTheTriggerOn) {
    delegate.applicationDidFinishLaunching();
    listener.fnDown(queue.uptime());
    EXPECT_TRUE(armedCapture.armed);
    listener.combinationUsed();
    EXPECT_FALSE(armedCapture.armed);
}

} // namespace

} // namespace velmo
