#include "app/desktop_application.h"

#include "app/app_delegate.h"
#include "app/command.h"
#include "app/desktop_composition.h"
#include "app/output.h"
#include "app/termination_signals.h"
#include "base/log.h"
#include "dictation/text_inserter.h"

#include <QCoreApplication>
#include <unistd.h>

namespace velmo {

namespace {

/// Ends the application in order: the text being pasted gets where it should, then the event loop ends. Asking twice
/// changes nothing.
std::function<void()> terminating(DesktopComposition &desktop) {
    return [&desktop, asked = false]() mutable {
        if (!std::exchange(asked, true))
            desktop.textInserter().finish([] { QCoreApplication::quit(); });
    };
}

} // namespace

int runDesktopApplication(Composition &composition) {
    setLogSink(descriptorLogSink(STDOUT_FILENO));
    TerminationSignals signals;
    const auto desktop = DesktopComposition::open(composition);
    if (!desktop) {
        printError(QStringLiteral("velmo: ") + desktop.error() +
                   QStringLiteral("\nWithout a display, 'velmo dictate FILE' turns recordings into text."));
        return exit_status::failure;
    }
    signals.onTerminate = terminating(**desktop);
    AppDelegate &delegate = (*desktop)->appDelegate();
    delegate.applicationDidFinishLaunching();
    const int status = QCoreApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}

} // namespace velmo
