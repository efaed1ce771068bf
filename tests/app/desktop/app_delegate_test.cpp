#include "app/desktop/app_delegate.h"

#include "app/desktop/user_interface.h"
#include "desks/desktop_fakes.h"
#include "dictation/session/dictation_stage.h"
#include "store/preference_keys.h"
#include "support/log_capture.h"
#include "support/qt_printing.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

struct FakeSynchronisation final : Synchronisation {
    int syncs = 0;
    std::optional<Date> last;
    void syncAll() override { ++syncs; }
    [[nodiscard]] std::optional<Date> lastSyncDate() const override { return last; }
};

/// Remembers what it was asked to show.
struct FakeInterface final : UserInterface, OverlayDisplay {
    std::function<void()> pressStatusItem;
    QStringList shown;
    bool hasTrayNow = true;
    bool onboards = false;

    void showStatusItem(std::function<void()> pressed) override {
        shown.append(u"status item"_s);
        pressStatusItem = std::move(pressed);
    }
    void updateStatusIcon(State state) override { shown.append(nameOf(state)); }
    void update(State state) override { shown.append(u"bar:"_s + nameOf(state)); }
    [[nodiscard]] bool hasTray() const override { return hasTrayNow; }
    [[nodiscard]] bool isOnboardingShown() const override { return onboards; }
    void togglePopover() override { shown.append(u"popover"_s); }
    void closePopover() override { shown.append(u"popover closed"_s); }
    void showOverlay() override { shown.append(u"overlay"_s); }
    void showMainWindow() override { shown.append(u"main window"_s); }
    void showOnboarding() override { shown.append(u"onboarding"_s); }
};

class AppDelegateTest : public ::testing::Test {
protected:
    testing::LogCapture log;
    FakeInterface interface;
    testing::DictationStage stage{&interface};
    MemoryPreferences keyboardPreferences;
    FakeSynchronisation synchronisation;
    testing::FakeSystemSettings systemSettings;
    AppDelegate delegate{{stage.queue, stage.preferences, keyboardPreferences, stage.manager, stage.controls,
                          stage.workspace, stage.account, synchronisation, stage.permission, systemSettings,
                          interface}};
};

TEST_F(AppDelegateTest, ShowsWhatVelmoDoes) {
    stage.preferences.set(keys::onboardingComplete, true);
    delegate.applicationDidFinishLaunching();
    stage.hotkey.pressed();
    stage.queue.runPosted();
    stage.hotkey.pressed();
    stage.queue.runPosted();
    stage.manager.cancelRecording();
    interface.pressStatusItem();
    delegate.openMainWindow();
    EXPECT_TRUE(delegate.applicationShouldHandleReopen());
    EXPECT_EQ(interface.shown.join(u' '),
              u"status item overlay bar:recording recording bar:idle idle popover popover closed main window "
              "main window"_s);
}

TEST_F(AppDelegateTest, ShowsOnboardingUntilAllIsThereThatDictationNeeds) {
    for (const bool isComplete : {false, true}) {
        for (const bool isTrusted : {false, true}) {
            interface.shown.clear();
            stage.preferences.set(keys::onboardingComplete, isComplete);
            stage.permission.trusted = isTrusted;
            delegate.applicationDidFinishLaunching();
            EXPECT_EQ(interface.shown.contains(u"onboarding"_s), !isComplete || !isTrusted)
                << isComplete << isTrusted;
        }
    }
    stage.permission.trusted = false;
    stage.preferences.set(keys::keylessSetupComplete, true);
    interface.shown.clear();
    delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(interface.shown.contains(u"onboarding"_s)) << "it has been said";
}

TEST_F(AppDelegateTest, ShowsTheMainWindowWhereNoTrayComesOnceNobodyIsBusy) {
    const auto shows = [this](std::chrono::nanoseconds after) {
        stage.queue.advance(after);
        return interface.shown.contains(u"main window"_s);
    };
    delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(shows(10s)) << "with a tray";
    interface.hasTrayNow = false;
    delegate.applicationDidFinishLaunching();
    stage.manager.startRecording();
    EXPECT_FALSE(shows(3s)) << "dictating";
    stage.manager.cancelRecording();
    interface.onboards = true;
    EXPECT_FALSE(shows(3s)) << "setting up";
    interface.onboards = false;
    EXPECT_FALSE(shows(3s - 1ns));
    EXPECT_TRUE(shows(1ns));
}

TEST_F(AppDelegateTest, LeadsToWhatDictationNeeds) {
    stage.permission.trusted = false;
    delegate.showPermission();
    EXPECT_EQ(systemSettings.opened, QStringList{u"keyboard"_s});
    systemSettings.pages.clear();
    delegate.showPermission();
    systemSettings.pages.insert(SystemSettings::Page::Keyboard);
    stage.permission.trusted = true; // it is the trigger key that is missing
    delegate.showPermission();
    EXPECT_EQ(systemSettings.opened.size(), 1);
    EXPECT_EQ(interface.shown.join(u' '),
              u"popover closed popover closed onboarding popover closed onboarding"_s);
}

TEST_F(AppDelegateTest, LaunchesInOrderAndGivesBackWhatItTook) {
    keyboardPreferences.set(u"AppleFnUsageType"_s, qint64(1));
    int changes = 0;
    QObject::connect(&stage.listener, &HotkeyListener::isUsingFnHotkeyChanged, [this, &changes] {
        ++changes;
        EXPECT_EQ(keyboardPreferences.integer(u"AppleFnUsageType"_s), 0) << "as long as the key is Velmo's";
    });
    delegate.applicationDidFinishLaunching();
    delegate.applicationWillTerminate();
    EXPECT_EQ(changes, 2);

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
    EXPECT_TRUE(stage.tap.key.isNull());
    EXPECT_FALSE(stage.hotkey.pressed);
    EXPECT_FALSE(stage.workspace.activated);
}

TEST_F(AppDelegateTest, SynchronisesOnActivationAtMostEveryThirtySeconds) {
    delegate.applicationDidFinishLaunching();
    stage.workspace.activated(false);
    EXPECT_EQ(synchronisation.syncs, 1);
    stage.workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 2);
    synchronisation.last = stage.queue.now() - 29s;
    stage.workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 2);
    stage.queue.advance(1s);
    stage.workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 3);
    stage.account.loggedIn = false;
    stage.queue.advance(60s);
    stage.workspace.activated(true);
    EXPECT_EQ(synchronisation.syncs, 3);
}

} // namespace

} // namespace velmo
