#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "app/process/running_application.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// These take an application that runs no time; one that is stopped or hangs should be noticed soon.
constexpr auto kPatience = 3s;
/// A recording waits for the microphone.
constexpr auto kRecordingPatience = 10s;

struct RemoteCommand {
    QLatin1StringView name;
    QLatin1StringView summary;
    std::chrono::milliseconds patience;
};

constexpr RemoteCommand kCommands[] = {
    {"start"_L1, "Start a dictation in the running application."_L1, kRecordingPatience},
    {"stop"_L1, "End the recording and have it typed."_L1, kPatience},
    {"toggle"_L1, "Start, or stop, as Control+Shift+A does; for a key of your desktop's own."_L1,
     kRecordingPatience},
    {"cancel"_L1, "End the recording and throw it away."_L1, kPatience},
    {"status"_L1, "Print idle, recording or transcribing."_L1, kPatience},
    {"show"_L1, "Show the main window."_L1, kPatience},
    {"quit"_L1, "End the running application."_L1, kPatience},
};

int runRemotely(const CommandWords &words, std::chrono::milliseconds patience,
                const Lazy<ApplicationBus &> &application, const QStringList &arguments) {
    CommandOptions options(words);
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    if (const auto outcome = runInApplication(application(), {QString(words.name)}, patience))
        return printOutcome(*outcome);
    printError(u"Velmo is not running. 'velmo' without a command starts it."_s);
    return exit_status::notRunning;
}

} // namespace

std::vector<Command> remoteCommands(const Lazy<ApplicationBus &> &application) {
    std::vector<Command> commands;
    for (const RemoteCommand &row : kCommands) {
        const CommandWords words = {row.name, {}, row.summary};
        commands.push_back({words, std::bind_front(runRemotely, words, row.patience, application)});
    }
    return commands;
}

} // namespace velmo
