#include "app/process/running_application.h"

#include "app/process/event_loop.h"

namespace velmo {

namespace {

using Outcome = std::optional<CommandOutcome>;
using Answer = ApplicationBus::Answer;

} // namespace

Outcome runInApplication(ApplicationBus &bus, const QStringList &words, std::chrono::milliseconds patience) {
    return awaitAnswer<Outcome>([&](const Answer &answer) { bus.run(words, patience, answer); });
}

Outcome openInApplication(ApplicationBus &bus, const QString &address) {
    return awaitAnswer<Outcome>([&](const Answer &answer) { bus.open({address}, answer); });
}

bool activateApplication(ApplicationBus &bus) {
    return awaitAnswer<Outcome>([&](const Answer &answer) { bus.activate(answer); }).has_value();
}

} // namespace velmo
