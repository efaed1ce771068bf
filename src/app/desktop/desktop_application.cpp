#include "app/desktop/desktop_application.h"

#include "app/desktop/app_delegate.h"
#include "app/desktop/application_commands.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "app/process/running_application.h"
#include "app/process/termination_signals.h"
#include "base/log.h"
#include "dictation/insertion/text_inserter.h"

#include <QCoreApplication>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// Ends the application in order: the text being pasted gets where it should, then the event loop ends. Asking twice
/// changes nothing. Windows are not asked: the main window can refuse to close until it has told how to come back.
std::function<void()> endInOrder(DesktopSession &desktop) {
    return [&desktop, asked = std::make_shared<bool>(false)] {
        if (!std::exchange(*asked, true))
            desktop.textInserter().finish([] { QCoreApplication::exit(); });
    };
}

int runUntilAskedToEnd(ApplicationBus &bus, AppDelegate &delegate) {
    delegate.applicationDidFinishLaunching();
    const int status = QCoreApplication::exec();
    bus.release(); // from here on another start is one
    delegate.applicationWillTerminate();
    return status;
}

} // namespace

int runDesktopApplication(ApplicationBus &bus, const OpenDesktop &openDesktop) {
    setLogSink(descriptorLogSink(STDOUT_FILENO));
    TerminationSignals signals;
    if (activateApplication(bus))
        return exit_status::success;
    const auto desktop = openDesktop();
    if (!desktop) {
        printError(u"velmo: "_s + desktop.error() +
                   u"\nWithout a display, 'velmo dictate FILE' turns recordings into text."_s);
        return exit_status::failure;
    }
    ApplicationCommands &commands = (*desktop)->commands();
    commands.onQuit = signals.onTerminate = endInOrder(**desktop);
    if (bus.claim(commands) == ApplicationBus::Claim::Taken) // by one that was started at the same moment
        return activateApplication(bus) ? exit_status::success : exit_status::failure;
    return runUntilAskedToEnd(bus, (*desktop)->appDelegate());
}

} // namespace velmo
