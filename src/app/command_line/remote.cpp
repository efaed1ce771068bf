#include "app/command_line/remote.h"

#include "app/command_line/command_options.h"
#include "app/command_line/output.h"
#include "app/composition/composition.h"

#include <QEventLoop>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// These take an application that runs no time; one that is stopped or hangs should be noticed soon.
constexpr auto kPatience = 3s;
/// A recording waits for the microphone.
constexpr auto kRecordingPatience = 10s;

std::chrono::milliseconds patienceFor(QLatin1StringView command) {
    const bool mayBeginRecording = command == "start"_L1 || command == "toggle"_L1;
    return mayBeginRecording ? kRecordingPatience : kPatience;
}

/// Waits for the answer to what `ask` asks.
template <class Ask>
std::optional<CommandOutcome> answerTo(Ask ask) {
    QEventLoop untilAnswered;
    std::optional<CommandOutcome> answer;
    ask([&](const std::optional<CommandOutcome> &outcome) {
        answer = outcome;
        untilAnswered.quit();
    });
    untilAnswered.exec();
    return answer;
}

int runRemotely(Composition &composition, const Command &command, const QStringList &arguments) {
    CommandOptions options(command);
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    const auto outcome = runInApplication(composition, {QString(command.name)}, patienceFor(command.name));
    if (outcome)
        return tell(*outcome);
    printError(u"Velmo is not running. 'velmo' without a command starts it."_s);
    return exit_status::notRunning;
}

template <std::size_t row>
int runRow(Composition &composition, const QStringList &arguments) {
    return runRemotely(composition, remoteCommands()[row], arguments);
}

} // namespace

std::optional<CommandOutcome> runInApplication(Composition &composition, const QStringList &words,
                                               std::chrono::milliseconds patience) {
    return answerTo([&](const ApplicationBus::Answer &answer) {
        composition.applicationBus().run(words, patience, answer);
    });
}

bool activateApplication(Composition &composition) {
    return answerTo(
               [&](const ApplicationBus::Answer &answer) { composition.applicationBus().activate(answer); })
        .has_value();
}

int tell(const CommandOutcome &outcome) {
    if (!outcome.message.isEmpty())
        printError(outcome.message);
    return print(outcome.output) ? outcome.status : exit_status::failure;
}

std::vector<Command> remoteCommands() {
    const auto row = [](const char *name, const char *summary, auto run) {
        return Command{QLatin1StringView(name), QLatin1StringView(), QLatin1StringView(summary), run};
    };
    return {
        row("start", "Start a dictation in the running application.", runRow<0>),
        row("stop", "End the recording and have it typed.", runRow<1>),
        row("toggle", "Start, or stop, as Control+Shift+A does; for a key of your desktop's own.", runRow<2>),
        row("cancel", "End the recording and throw it away.", runRow<3>),
        row("status", "Print idle, recording or transcribing.", runRow<4>),
        row("show", "Show the main window.", runRow<5>),
        row("quit", "End the running application.", runRow<6>),
    };
}

int handAddressOver(Composition &composition, const QString &address) {
    for (ApplicationBus *bus : {&composition.signInBus(), &composition.applicationBus()}) {
        const auto outcome =
            answerTo([&](const ApplicationBus::Answer &answer) { bus->open({address}, answer); });
        if (outcome)
            return tell(*outcome);
    }
    printError(u"Velmo is not running, so nobody waits for this address."_s);
    return exit_status::notRunning;
}

} // namespace velmo
