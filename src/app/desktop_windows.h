#pragma once

#include "app/user_interface.h"

#include <QQmlEngine>
#include <memory>

namespace velmo {

class Composition;
class HotkeyListener;
class MainWindowParts;
class RecordingManager;

/// The parts list of what can be seen: builds each window with its page states when it is first shown. Main thread.
class DesktopWindows final : public UserInterface {
public:
    /// What the windows show and steer; all of it outlives them.
    struct Collaborators {
        Composition &composition;
        RecordingManager &recordingManager;
        HotkeyListener &hotkeyListener;
    };

    explicit DesktopWindows(const Collaborators &collaborators);
    ~DesktopWindows() override;

    void showStatusItem(std::function<void()> pressed) override;
    void updateStatusIcon(State state) override;
    void togglePopover() override;
    void closePopover() override;
    void showOverlay() override;
    void showMainWindow() override;
    void showOnboarding() override;

private:
    Collaborators m_with;
    QQmlEngine m_engine;
    std::unique_ptr<MainWindowParts> m_mainWindow; ///< Made when it is first shown.
};

} // namespace velmo
