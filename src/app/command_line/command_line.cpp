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
    QString text = QStringLiteral(
        "Usage: velmo [COMMAND [ARGUMENTS]]\n\n"
        "Velmo types what you say. Without a command it runs in your desktop session: hold the trigger\n"
        "key (Right Control) and speak, or press Control+Shift+A to start and stop.\n\n"
        "Commands:\n");
    for (const Command &command : commands()) {
        const QString words = (command.name + u' ' + command.usage).trimmed();
        text += QStringLiteral("  %1\n      %2\n").arg(words, QString(command.summary));
    }
    text += QStringLiteral(
        "\nOptions:\n"
        "  --help       this overview; after a command, its own\n"
        "  --version    the version of Velmo\n\n"
        "Environment:\n"
        "  VELMO_SERVICE_URL    origin of the service for this run, such as https://velmo.example\n");
    return text;
}

int printVersion() {
    return print(QStringLiteral("velmo " VELMO_VERSION "\n")) ? exit_status::success : exit_status::failure;
}

int usageError(const QString &message) {
    printError(message + QStringLiteral("\nTry 'velmo --help'."));
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
        return usageError(QStringLiteral("velmo: unknown option '%1'").arg(first));
    return usageError(QStringLiteral("velmo: unknown command '%1'").arg(first));
}

} // namespace velmo
