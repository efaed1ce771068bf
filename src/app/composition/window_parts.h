#pragma once

#include "app/desktop/status_item.h"
#include "app/desktop/user_interface.h"
#include "platform/linux/xdg/autostart_entry.h"
#include "ui/models/trigger_key_capture.h"
#include "ui/models/trigger_key_name.h"
#include "ui/popover/popover_window.h"

namespace velmo {

class AudioLevelProvider;
class CoreParts;
class MicrophonePermission;
class MicrophonePresence;
class RecordingManager;
class RecordingOverlayController;
class SystemSettings;
class TextInserter;
struct X11Input;

/// The parts list of what can be seen: builds each window with its page states when it is first shown. Main thread.
class WindowParts final : public UserInterface {
public:
    /// What the windows show and steer; all of it outlives them.
    struct Collaborators {
        CoreParts &core;
        QQmlEngine &engine;
        const X11Input &display;
        RecordingManager &recordingManager;
        HotkeyListener &hotkeyListener;
        AudioLevelProvider &levelMeter;
        TextInserter &textInserter;
        RecordingOverlayController &overlay;
        MicrophonePermission &microphonePermission;
        MicrophonePresence &microphonePresence;
        SystemSettings &systemSettings;
    };
    /// What leads out of the popover.
    struct Actions {
        std::function<void()> openMainWindow;
        std::function<void()> quit;
        std::function<void()> showPermission;
    };

    WindowParts(const Collaborators &collaborators, Actions actions);
    ~WindowParts() override;

    void showStatusItem(std::function<void()> pressed) override;
    void updateStatusIcon(State state) override { m_statusItem->setState(state); }
    [[nodiscard]] bool hasTray() const override { return StatusItem::hasHost(); }
    void togglePopover() override { m_popover.toggle(m_statusItem->frame()); }
    void closePopover() override { m_popover.close(); }
    void showOverlay() override;
    void showMainWindow() override;
    void showOnboarding() override;
    [[nodiscard]] bool isOnboardingShown() const override;

private:
    struct MainWindow;
    struct Onboarding;

    void followMotionPreference();
    [[nodiscard]] std::unique_ptr<MenuBarView> makeMenuBarView();

    Collaborators m_with;
    Actions m_actions;
    bool m_isDesktopDark;
    TriggerKeyName m_triggerKeyName; ///< For every text that names the key.
    TriggerKeyCapture m_triggerKey;  ///< Chosen in onboarding and on the settings page.
    AutostartEntry m_loginItem;
    PopoverWindow m_popover;
    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<Onboarding> m_onboarding;
    std::unique_ptr<MainWindow> m_mainWindow;
};

} // namespace velmo
