#pragma once

#include "app/desktop/status_item.h"
#include "app/desktop/user_interface.h"
#include "base/main_queue.h"

#include <memory>

class QQmlEngine;

namespace velmo {

class AccessibilityPermission;
class AudioLevelProvider;
class CoreParts;
class DesktopPanels;
class FloatingWindows;
class GlobalMouseMonitor;
class HotkeyListener;
class MainWindowParts;
class MenuBarView;
class MotionPreference;
class PopoverWindow;
class RecordingManager;
class RecordingOverlayController;
class SetupParts;
class TextInserter;

/// The parts list of what can be seen: builds each window with its page states when it is first shown. Main thread.
class WindowParts final : public UserInterface {
public:
    /// What the windows show and steer; all of it outlives them.
    struct Collaborators {
        CoreParts &composition;
        QQmlEngine &engine;
        FloatingWindows &floating;
        const DesktopPanels &panels;
        GlobalMouseMonitor &mouse;
        MotionPreference &motion;
        const AccessibilityPermission &permission;
        RecordingManager &recordingManager;
        HotkeyListener &hotkeyListener;
        AudioLevelProvider &levelMeter;
        TextInserter &textInserter;
        RecordingOverlayController &overlay;
        SetupParts &setup;
    };
    /// What the windows ask of the application.
    struct Requests {
        std::function<void()> openMainWindow;
        std::function<void()> quit;
    };

    WindowParts(const Collaborators &collaborators, Requests requests);
    ~WindowParts() override;

    void showStatusItem(std::function<void()> pressed) override;
    void updateStatusIcon(State state) override;
    void togglePopover() override;
    void closePopover() override;
    void showOverlay() override;
    void showMainWindow() override;
    void showOnboarding() override;

private:
    [[nodiscard]] std::unique_ptr<MenuBarView> makeMenuBarView();
    void followMotionPreference();
    void awaitTray();
    void showMainWindowWithoutTray();

    Collaborators m_with;
    Requests m_requests;
    bool m_isDesktopDark;
    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<PopoverWindow> m_popover;
    std::unique_ptr<MainWindowParts> m_mainWindow; ///< Made when it is first shown.
    MainQueue::Timer m_trayTimer;
};

} // namespace velmo
