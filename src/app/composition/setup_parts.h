#pragma once

#include "base/calendar.h"
#include "base/interface.h"

#include <memory>

class QObject;
class QQmlEngine;

namespace velmo {

class AccessibilityPermission;
class AccountView;
class CoreParts;
class HotkeyListener;
class KeyboardKeys;
class LoginItem;
class MicrophonePermission;
class MicrophonePresence;
class OnboardingView;
class OnboardingWindowController;
class SettingsView;
class SystemSettings;
class TriggerKeyCapture;

/// The parts list of what sets Velmo up: the state of the account and settings pages, and onboarding with its window.
/// Each is made when it is first asked for. Main thread.
class SetupParts : private Unmovable {
public:
    /// What the desktop offers; all of it outlives the parts.
    struct Desktop {
        HotkeyListener &listener;
        const AccessibilityPermission &accessibility;
        const KeyboardKeys &keys;
        MicrophonePermission &microphone;
        MicrophonePresence &microphonePresence;
        SystemSettings &systemSettings;
        LoginItem &loginItem;
    };

    /// The composition outlives the parts.
    SetupParts(CoreParts &composition, const Desktop &desktop);
    ~SetupParts();

    [[nodiscard]] QObject &accountPage();
    [[nodiscard]] QObject &settingsPage();
    [[nodiscard]] bool canWatchKeys() const;
    /// The engine outlives the parts too.
    void showOnboarding(QQmlEngine &engine);
    [[nodiscard]] bool isOnboardingShown() const;
    /// Leads on to what dictation still needs: the desktop's own page where that helps, else onboarding, which says how.
    void showPermission(QQmlEngine &engine);

private:
    TriggerKeyCapture &triggerKey();

    CoreParts &m_composition;
    Desktop m_desktop;
    std::unique_ptr<TriggerKeyCapture> m_triggerKey;
    std::unique_ptr<Calendar> m_calendar;
    std::unique_ptr<AccountView> m_accountPage;
    std::unique_ptr<SettingsView> m_settingsPage;
    std::unique_ptr<OnboardingView> m_onboarding;
    std::unique_ptr<OnboardingWindowController> m_onboardingWindow;
};

} // namespace velmo
