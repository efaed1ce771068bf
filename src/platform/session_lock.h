#pragma once

#include "base/interface.h"

#include <functional>

namespace velmo {

/// Whether the session is locked: the person is away, and whoever is at the keyboard may be anybody. Main thread.
class SessionLock : public Interface {
public:
    [[nodiscard]] virtual bool isLocked() const = 0;

    /// Called when the session has been locked.
    std::function<void()> onLocked;
};

} // namespace velmo
