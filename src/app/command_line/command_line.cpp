#include "app/command_line/command_line.h"

#include "app/command_line/clean.h"
#include "app/command_line/defaults.h"
#include "app/command_line/dictate.h"
#include "app/command_line/history.h"
#include "app/command_line/output.h"
#include "app/command_line/remote.h"
#include "app/command_line/sign_in.h"
#include "app/command_line/sign_out.h"
#include "app/command_line/sync.h"
#include "app/desktop/desktop_application.h"

#include <vector>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// In the order of the overview.
std::vector<Command> commands() {
    std::vector<Command> all = {
        dictateCommand(), cleanCommand(), historyCommand(),  signInCommand(),
        signOutCommand(), syncCommand(),  defaultsCommand(),
    };
    const auto remote = remoteCommands();
    all.insert(all.end(), remote.begin(), remote.end());
    return all;
}

bool isOwnAddress(const QString &word) {
    return word.startsWith(u"velmo:", Qt::CaseInsensitive);
}

constexpr QLatin1StringView kVersionOption{"--version"};

QString overview() {
    QString text =
        u"Usage: velmo [COMMAND [ARGUMENTS]]\n\n"
        "Velmo types what you say. Without a command it runs in your desktop session: hold the trigger\n"
        "key (Right Control) and speak, or press Control+Shift+A to start and stop.\n\n"
        "Commands:\n"_s;
    for (const Command &command : commands()) {
        const QString words = (command.name + u' ' + command.usage).trimmed();
        text += u"  %1\n      %2\n"_s.arg(words, QString(command.summary));
    }
    text += u"\nOptions:\n"
            "  --help       this overview; after a command, its own\n"
            "  --version    the version of Velmo\n\n"
            "Environment:\n"
            "  VELMO_SERVICE_URL    origin of the service for this run, such as https://velmo.example\n"_s;
    return text;
}

int printVersion() {
    return print(u"velmo " VELMO_VERSION "\n"_s) ? exit_status::success : exit_status::failure;
}

int usageError(const QString &message) {
    printError(message + u"\nTry 'velmo --help'."_s);
    return exit_status::usage;
}

} // namespace

int runCommandLine(Composition &composition, const QStringList &arguments) {
    if (arguments.isEmpty())
        return runDesktopApplication(composition);
    const QString &first = arguments.first();
    if (first == u"--help" || first == u"-h") {
        print(overview());
        return exit_status::success;
    }
    if (first == kVersionOption)
        return printVersion();
    if (isOwnAddress(first))
        return handAddressOver(composition, first);
    for (const Command &command : commands()) {
        if (first == command.name)
            return arguments.value(1) == kVersionOption ? printVersion()
                                                        : command.run(composition, arguments.sliced(1));
    }
    if (first.startsWith(u'-'))
        return usageError(u"velmo: unknown option '%1'"_s.arg(first));
    return usageError(u"velmo: unknown command '%1'"_s.arg(first));
}

} // namespace velmo
