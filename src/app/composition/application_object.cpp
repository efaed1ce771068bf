#include "app/composition/application_object.h"

#include "app/process/termination_signals.h"
#include "platform/linux/session_bus_presence.h"
#include "platform/linux/x11/display_presence.h"

#include <QApplication>

namespace velmo {

namespace {

/// Windows that float above all others without taking the keyboard exist on X displays alone; a Wayland session has one
/// too.
void chooseX11() {
    constexpr const char *kPlatform = "QT_QPA_PLATFORM";
    if (!qEnvironmentVariableIsSet(kPlatform))
        qputenv(kPlatform, "xcb");
    qputenv("QT_XCB_GL_INTEGRATION", "none"); // windows are drawn in software
}

} // namespace

std::unique_ptr<QCoreApplication> makeApplicationObject(const QStringList &arguments, int &argc,
                                                        char **argv) {
    if (!arguments.isEmpty() || !hasX11Display())
        return std::make_unique<QCoreApplication>(argc, argv);
    TerminationSignals::block();
    keepFromStartingSessionBus();
    chooseX11();
    auto application = std::make_unique<QApplication>(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false); // the tray icon stays
    return application;
}

} // namespace velmo
