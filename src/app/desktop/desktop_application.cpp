#include "app/desktop/desktop_application.h"

#include "app/command_line/command.h"
#include "app/command_line/output.h"
#include "app/command_line/remote.h"
#include "app/composition/composition.h"
#include "app/composition/desktop_composition.h"
#include "app/desktop/app_delegate.h"
#include "app/desktop/application_commands.h"
#include "app/desktop/termination_signals.h"
#include "base/log.h"
#include "dictation/insertion/text_inserter.h"

#include <QCoreApplication>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// Ends the application in order: the text being pasted gets where it should, then the event loop ends. Asking twice
/// changes nothing. Windows are not asked: the main window can refuse to close until it has told how to come back.
std::function<void()> terminating(DesktopComposition &desktop) {
    return [&desktop, asked = std::make_shared<bool>(false)] {
        if (!std::exchange(*asked, true))
            desktop.textInserter().finish([] { QCoreApplication::exit(); });
    };
}

/// Has other processes find this one. False where one of them has become the application first.
bool offer(Composition &composition, ApplicationCommands &commands, const std::function<void()> &quit) {
    commands.onAddress = [&composition](const QString &address) { composition.deliverCallback(address); };
    commands.onQuit = quit;
    return composition.applicationBus().claim(commands) != ApplicationBus::Claim::Taken;
}

} // namespace

int runDesktopApplication(Composition &composition) {
    setLogSink(descriptorLogSink(STDOUT_FILENO));
    TerminationSignals signals;
    if (activateApplication(composition))
        return exit_status::success;
    const auto desktop = DesktopComposition::open(composition);
    if (!desktop) {
        printError(u"velmo: "_s + desktop.error() +
                   u"\nWithout a display, 'velmo dictate FILE' turns recordings into text."_s);
        return exit_status::failure;
    }
    signals.onTerminate = terminating(**desktop);
    if (!offer(composition, (*desktop)->commands(), signals.onTerminate))
        return activateApplication(composition) ? exit_status::success : exit_status::failure;
    AppDelegate &delegate = (*desktop)->appDelegate();
    delegate.applicationDidFinishLaunching();
    static_cast<void>(composition.preferenceWatch()); // pages and history follow other processes from here on
    const int status = QCoreApplication::exec();
    composition.applicationBus().release(); // from here on another start is one
    delegate.applicationWillTerminate();
    return status;
}

} // namespace velmo
