#pragma once

#include <functional>

namespace velmo {

/// Whether the session is locked: the person is away, and whoever is at the keyboard may be anybody. Main thread.
class SessionLock {
public:
    SessionLock() = default;
    SessionLock(const SessionLock &) = delete;
    SessionLock &operator=(const SessionLock &) = delete;
    virtual ~SessionLock() = default;

    [[nodiscard]] virtual bool isLocked() const = 0;

    /// Called when the session has been locked.
    std::function<void()> onLocked;
};

} // namespace velmo
