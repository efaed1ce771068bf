#pragma once

#include "app/command_line/command.h"
#include "platform/application_bus.h"

#include <chrono>
#include <optional>
#include <vector>

namespace velmo {

/// Has the running application carry the words out, and waits in the event loop until it has. Nothing where none runs.
[[nodiscard]] std::optional<CommandOutcome>
runInApplication(Composition &composition, const QStringList &words, std::chrono::milliseconds patience);

/// Has the running application show itself. False where none runs.
[[nodiscard]] bool activateApplication(Composition &composition);

/// Prints what became of a command and answers its exit status.
int tell(const CommandOutcome &outcome);

/// `velmo start`, `stop`, `toggle`, `cancel`, `status`, `show` and `quit`, which are for the running application alone.
[[nodiscard]] std::vector<Command> remoteCommands();

/// Hands an address of Velmo's own scheme to who waits for it: a sign-in on the command line, else the application.
int handAddressOver(Composition &composition, const QString &address);

} // namespace velmo
