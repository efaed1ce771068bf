#include "app/desktop_windows.h"

#include "app/main_window_parts.h"
#include "ui/controls/interface_setup.h"

namespace velmo {

DesktopWindows::DesktopWindows(const Collaborators &collaborators) : m_with(collaborators) {}

DesktopWindows::~DesktopWindows() = default;

void DesktopWindows::showStatusItem(std::function<void()>) {}

void DesktopWindows::updateStatusIcon(State) {}

void DesktopWindows::togglePopover() {}

void DesktopWindows::closePopover() {}

void DesktopWindows::showOverlay() {}

void DesktopWindows::showMainWindow() {
    if (!m_mainWindow) {
        prepareInterface();
        m_mainWindow = std::make_unique<MainWindowParts>(m_with.composition, m_engine, [] { return true; });
    }
    m_mainWindow->show();
}

void DesktopWindows::showOnboarding() {}

} // namespace velmo
