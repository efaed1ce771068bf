#pragma once

#include "base/main_queue.h"

namespace velmo {

class RecordingManager;
class UserInterface;

/// Shows the main window on a desktop without a tray, where nothing else would show that Velmo runs. Main thread.
class TrayFallback {
public:
    /// Panels that start together with Velmo have their tray ready by then (a product decision).
    static constexpr std::chrono::seconds trayPatience{3};

    /// All of them outlive the fallback.
    TrayFallback(MainQueue &queue, const RecordingManager &recordingManager, UserInterface &interface);

    /// The status item was offered to the desktop.
    void awaitTray();

private:
    void look();

    MainQueue &m_queue;
    const RecordingManager &m_recordingManager;
    UserInterface &m_interface;
    MainQueue::Timer m_timer;
};

} // namespace velmo
