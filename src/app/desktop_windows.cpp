#include "app/desktop_windows.h"

namespace velmo {

DesktopWindows::DesktopWindows(const Collaborators &collaborators) : m_with(collaborators) {}

DesktopWindows::~DesktopWindows() = default;

void DesktopWindows::showStatusItem(std::function<void()>) {}

void DesktopWindows::updateStatusIcon(State) {}

void DesktopWindows::togglePopover() {}

void DesktopWindows::closePopover() {}

void DesktopWindows::showOverlay() {}

void DesktopWindows::showMainWindow() {}

void DesktopWindows::showOnboarding() {}

} // namespace velmo
