#include "platform/linux/x11/x11_input.h"

#include "platform/linux/x11/desktop/active_application.h"
#include "platform/linux/x11/desktop/animation_setting.h"
#include "platform/linux/x11/desktop/dock_windows.h"
#include "platform/linux/x11/desktop/mouse_monitor.h"
#include "platform/linux/x11/desktop/unmanaged_windows.h"
#include "platform/linux/x11/keys/accessibility.h"
#include "platform/linux/x11/keys/hotkey.h"
#include "platform/linux/x11/keys/keyboard_keys.h"
#include "platform/linux/x11/keys/trigger_tap.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <xcb/xtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

bool canInject(x11::DesktopWatch *watch) {
    return watch && watch->connection().has(xcb_test_id);
}

} // namespace

X11Input makeX11Input(MainQueue &queue, const X11InputOptions &options) {
    const std::shared_ptr<x11::DesktopWatch> watch = x11::DesktopWatch::open(options.display);
    X11Input input;
    input.permission = std::make_unique<x11::Accessibility>(watch != nullptr, canInject(watch.get()),
                                                            QProcessEnvironment::systemEnvironment());
    input.tap = std::make_unique<x11::TriggerTap>(
        queue, watch, x11::TriggerTap::Options{options.display, options.keyGuardProgram});
    input.hotkey = std::make_unique<x11::Hotkeys>(queue, watch, options.display);
    input.mouse = std::make_unique<x11::MouseMonitor>(queue, watch);
    input.floating = std::make_unique<x11::UnmanagedWindows>(queue, watch, options.windows);
    input.panels = std::make_unique<x11::DockWindows>(watch);
    input.motion = std::make_unique<x11::AnimationSetting>(queue, watch);
    input.keys = std::make_unique<x11::Keys>(watch);
    input.workspace = std::make_unique<x11::ActiveApplication>(queue, watch);
    return input;
}

QString keyGuardProgram() {
    const QDir here(QCoreApplication::applicationDirPath());
    const QString beside = here.filePath(u"velmo-key-guard"_s);
    return QFileInfo::exists(beside) ? beside : here.filePath(u"../libexec/velmo/velmo-key-guard"_s);
}

} // namespace velmo
