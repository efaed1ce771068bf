#include "app/command_line/command_line.h"

#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "app/process/running_application.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

bool isOwnAddress(const QString &word) {
    return word.startsWith(u"velmo:", Qt::CaseInsensitive);
}

constexpr QLatin1StringView kVersionOption{"--version"};

QString overview(const std::vector<Command> &commands) {
    QString text =
        u"Usage: velmo [COMMAND [ARGUMENTS]]\n\n"
        "Velmo types what you say. Without a command it runs in your desktop session: hold the trigger\n"
        "key (Right Control) and speak, or press Control+Shift+A to start and stop.\n\n"
        "Commands:\n"_s;
    for (const Command &command : commands) {
        const QString words = (command.words.name + u' ' + command.words.usage).trimmed();
        text += u"  %1\n      %2\n"_s.arg(words, QString(command.words.summary));
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

int handAddressOver(const std::vector<Lazy<ApplicationBus &>> &addressees, const QString &address) {
    for (const auto &addressee : addressees) {
        if (const auto outcome = openInApplication(addressee(), address))
            return printOutcome(*outcome);
    }
    printError(u"Velmo is not running, so nobody waits for this address."_s);
    return exit_status::notRunning;
}

int usageError(const QString &message) {
    printError(message + u"\nTry 'velmo --help'."_s);
    return exit_status::usage;
}

} // namespace

int runCommandLine(const CommandLine &commandLine, const QStringList &arguments) {
    const QString &first = arguments.first();
    if (first == u"--help" || first == u"-h") {
        print(overview(commandLine.commands));
        return exit_status::success;
    }
    if (first == kVersionOption)
        return printVersion();
    if (isOwnAddress(first))
        return handAddressOver(commandLine.addressees, first);
    for (const Command &command : commandLine.commands) {
        if (first == command.words.name)
            return arguments.value(1) == kVersionOption ? printVersion() : command.run(arguments.sliced(1));
    }
    if (first.startsWith(u'-'))
        return usageError(u"velmo: unknown option '%1'"_s.arg(first));
    return usageError(u"velmo: unknown command '%1'"_s.arg(first));
}

} // namespace velmo
