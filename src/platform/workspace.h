#pragma once

#include "base/interface.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// What else runs on the desktop.
class Workspace : public Interface {
public:
    /// The name, as people know it, of the application that has focus; nothing when none has or it is
    /// unnamed. Main thread; answers from what is known already and never waits for another program.
    [[nodiscard]] virtual std::optional<QString> frontmostApplicationName() const = 0;

    /// Told, as a task of the main queue, whenever an application comes to the front.
    using ActivationHandler = std::function<void(bool isThisApplication)>;

    /// Replaces the handler; an empty one ends the notices. Main thread.
    virtual void setActivationHandler(ActivationHandler handler) = 0;
};

} // namespace velmo
