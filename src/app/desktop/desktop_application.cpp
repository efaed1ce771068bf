#include "app/desktop/desktop_application.h"

#include "app/composition/core_parts.h"
#include "app/composition/desktop_parts.h"
#include "app/desktop/app_delegate.h"
#include "app/desktop/application_commands.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "app/process/running_application.h"
#include "app/process/termination_signals.h"
#include "base/log.h"
#include "dictation/insertion/text_inserter.h"
#include "platform/linux/xdg/browser_authentication.h"
#include "store/preference_watch.h"

#include <QCoreApplication>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// Ends the application in order: the text being pasted gets where it should, then the event loop ends. Asking twice
/// changes nothing. Windows are not asked: the main window can refuse to close until it has told how to come back.
std::function<void()> terminating(DesktopParts &desktop) {
    return [&desktop, asked = std::make_shared<bool>(false)] {
        if (!std::exchange(*asked, true))
            desktop.textInserter().finish([] { QCoreApplication::exit(); });
    };
}

/// Has other processes find this one. False where one of them has become the application first.
bool offer(CoreParts &composition, ApplicationCommands &commands, const std::function<void()> &quit) {
    commands.onAddress = [&composition](const QString &address) {
        composition.browserAuthentication().deliver(address);
    };
    commands.onQuit = quit;
    return composition.applicationBus().claim(commands) != ApplicationBus::Claim::Taken;
}

} // namespace

int runDesktopApplication(CoreParts &composition) {
    setLogSink(descriptorLogSink(STDOUT_FILENO));
    TerminationSignals signals;
    if (activateApplication(composition.applicationBus()))
        return exit_status::success;
    const auto desktop = DesktopParts::open(composition);
    if (!desktop) {
        printError(u"velmo: "_s + desktop.error() +
                   u"\nWithout a display, 'velmo dictate FILE' turns recordings into text."_s);
        return exit_status::failure;
    }
    signals.onTerminate = terminating(**desktop);
    if (!offer(composition, (*desktop)->commands(), signals.onTerminate))
        return activateApplication(composition.applicationBus()) ? exit_status::success
                                                                 : exit_status::failure;
    AppDelegate &delegate = (*desktop)->appDelegate();
    delegate.applicationDidFinishLaunching();
    static_cast<void>(composition.preferenceWatch()); // pages and history follow other processes from here on
    const int status = QCoreApplication::exec();
    composition.applicationBus().release(); // from here on another start is one
    delegate.applicationWillTerminate();
    return status;
}

} // namespace velmo
