#pragma once

#include "base/main_queue.h"
#include "platform/accessibility_permission.h"
#include "platform/desktop_panels.h"
#include "platform/event_tap.h"
#include "platform/floating_windows.h"
#include "platform/global_hotkey.h"
#include "platform/global_mouse_monitor.h"
#include "platform/keyboard_keys.h"
#include "platform/motion_preference.h"
#include "platform/workspace.h"

#include <QString>
#include <memory>

struct xcb_connection_t;

namespace velmo {

/// What an X display tells of keys, mouse and windows, and does for windows of ours. The parts share one thread with connections of its
/// own, which ends with the last of them. Without a display each part says so in its own way.
struct X11Input {
    std::unique_ptr<AccessibilityPermission> permission;
    std::unique_ptr<EventTap> tap;
    std::unique_ptr<GlobalHotkey> hotkey;
    std::unique_ptr<GlobalMouseMonitor> mouse;
    std::unique_ptr<FloatingWindows> floating;
    std::unique_ptr<DesktopPanels> panels;
    std::unique_ptr<MotionPreference> motion;
    std::unique_ptr<KeyboardKeys> keys;
    std::unique_ptr<Workspace> workspace;
};

struct X11InputOptions {
    QString display;         ///< As in $DISPLAY; empty for what that says.
    QString keyGuardProgram; ///< Without it the trigger key is observed but not kept from other applications.

    /// The connection on which our windows are made; none where there are no windows.
    xcb_connection_t *windows = nullptr;
};

/// Main thread; asks the X server a few things and waits for the answers. `queue` outlives the parts.
[[nodiscard]] X11Input makeX11Input(MainQueue &queue, const X11InputOptions &options);

/// Where the key guard is installed, as seen from the running program: beside it in a build, under libexec
/// when installed.
[[nodiscard]] QString keyGuardProgram();

} // namespace velmo
