#include "app/command_line/command_line.h"
#include "app/composition/application_object.h"
#include "app/composition/core_parts.h"
#include "app/composition/desktop_parts.h"
#include "app/desktop/desktop_application.h"
#include "app/process/arguments.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "base/log.h"
#include "base/standard_streams.h"
#include "service/wire/service_origin.h"

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

int main(int argc, char **argv) {
    velmo::occupyStandardStreams();
    // A reader that went away is an answer of write(), not the end of the process.
    std::signal(SIGPIPE, SIG_IGN);

    const QStringList arguments = velmo::takeArguments(argc, argv);
    const auto application = velmo::makeApplicationObject(arguments, argc, argv);
    QCoreApplication::setApplicationName(u"velmo"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMO_VERSION));
    velmo::setLogSink(velmo::descriptorLogSink(STDERR_FILENO));

    const auto origin = velmo::ServiceOrigin::ofThisRun();
    if (!origin) {
        velmo::printError(u"velmo: "_s + origin.error());
        return velmo::exit_status::usage;
    }
    velmo::CoreParts parts(*origin);
    if (!arguments.isEmpty())
        return velmo::runCommandLine(parts.commandLine(), arguments);
    return velmo::runDesktopApplication(parts.applicationBus(),
                                        [&parts] { return velmo::openDesktopParts(parts); });
}
