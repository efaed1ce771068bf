#include "app/desktop/tray_fallback.h"

#include "app/desktop/user_interface.h"
#include "dictation/session/recording_manager.h"

namespace velmo {

TrayFallback::TrayFallback(MainQueue &queue, const RecordingManager &recordingManager,
                           UserInterface &interface)
    : m_queue(queue), m_recordingManager(recordingManager), m_interface(interface) {}

void TrayFallback::awaitTray() {
    m_timer = m_queue.after(trayPatience, [this] { look(); });
}

/// The window takes the keyboard, so it waits for the end of a dictation and of onboarding.
void TrayFallback::look() {
    if (m_interface.hasTray())
        return;
    if (m_recordingManager.state() == State::idle && !m_interface.isOnboardingShown())
        m_interface.showMainWindow();
    else
        awaitTray();
}

} // namespace velmo
