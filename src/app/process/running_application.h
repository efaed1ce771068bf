#pragma once

#include "platform/application_bus.h"

namespace velmo {

// What one process of the session asks another, and waits for in the event loop. Nothing where nobody goes by the bus's
// name; an answer that does not come in time is an outcome with a message.

/// Has the words of a command line carried out.
[[nodiscard]] std::optional<CommandOutcome> runInApplication(ApplicationBus &bus, const QStringList &words,
                                                             std::chrono::milliseconds patience);

/// Hands an address of Velmo's own scheme over.
[[nodiscard]] std::optional<CommandOutcome> openInApplication(ApplicationBus &bus, const QString &address);

/// Has the running application show itself. False where none runs.
[[nodiscard]] bool activateApplication(ApplicationBus &bus);

} // namespace velmo
