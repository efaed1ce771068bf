#pragma once

#include "app/desktop/tray_fallback.h"
#include "base/lifetime.h"
#include "base/main_queue.h"
#include "dictation/dictation_state.h"

#include <QObject>

namespace velmo {

class AccessibilityPermission;
class Account;
class DictationControls;
class Preferences;
class RecordingManager;
class Synchronisation;
class SystemSettings;
class UserInterface;
class Workspace;

/// The life of the desktop application from launch to termination: shows it in the tray and at the foot of the screen,
/// takes the keys, keeps a signed-in user's data in step, and gives back at the end what it took at the start. Main
/// thread.
class AppDelegate final : public QObject {
    Q_OBJECT
public:
    /// Whom the delegate works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        Preferences &preferences;
        Preferences &keyboardPreferences; ///< The domain that holds what the trigger key does by itself.
        RecordingManager &recordingManager;
        DictationControls &controls;
        Workspace &workspace;
        Account &account;
        Synchronisation &synchronisation;
        const AccessibilityPermission &permission;
        SystemSettings &systemSettings;
        UserInterface &interface;
    };

    explicit AppDelegate(const Collaborators &collaborators);

    void applicationDidFinishLaunching();
    /// Once, on every orderly way out: quitting, SIGTERM, the end of the session.
    void applicationWillTerminate();

    /// What a press of the status item does: shows the popover, or closes it.
    void togglePopover();
    void openMainWindow();
    /// Leads on to what dictation still needs: the desktop's own page where that helps, else onboarding, which says how.
    void showPermission();
    /// Somebody started the application again while it runs. Answers that this has been seen to.
    bool applicationShouldHandleReopen();

    /// Another look at the person's data when they come back to the application, at most every 30 seconds.
    void appDidBecomeActive();

private:
    void updateStatusIcon(State state);
    void showOnboardingWhereNeeded();
    void syncOnLaunch();
    void syncOnActivation();
    void takeTriggerKey();
    void giveTriggerKeyBack();
    void followState();

    Collaborators m_with;
    TrayFallback m_trayFallback;
    Lifetime m_lifetime;
};

} // namespace velmo
