#pragma once

#include "base/interface.h"
#include "base/lifetime.h"

#include <chrono>
#include <functional>
#include <memory>

namespace velmo {

/// A moment of the wall clock, as it is stored and shown.
using Date = std::chrono::system_clock::time_point;

/// Seconds between two moments as a floating-point number.
[[nodiscard]] inline double secondsBetween(Date from, Date to) {
    return std::chrono::duration<double>(to - from).count();
}

/// Milliseconds between two moments as a floating-point number.
[[nodiscard]] inline double millisecondsBetween(Date from, Date to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

/// Time, and the main thread's queue of tasks. All published state is changed in tasks of this queue, so it
/// puts every change in one order. Tests use a twin that is moved by hand.
class MainQueue : public Interface {
public:
    using Task = std::function<void()>;

    /// A delayed task that somebody owns: dropping it cancels the task. Owned and dropped on the main thread.
    class DelayedTask : public Interface {};
    using Timer = std::unique_ptr<DelayedTask>;

    /// Runs the task later on the main thread, after every task posted before it. Any thread.
    virtual void post(Task task) = 0;

    /// Runs the task on the main thread once the delay has passed, unless the handle is dropped first. Main
    /// thread.
    [[nodiscard]] virtual Timer after(std::chrono::milliseconds delay, Task task) = 0;

    /// The wall clock. Any thread.
    [[nodiscard]] virtual Date now() const = 0;

    /// A clock that never goes back, counted from some fixed moment. Any thread.
    [[nodiscard]] virtual std::chrono::nanoseconds uptime() const = 0;
};

/// Wraps a callback (returning nothing) for whoever calls it on another thread: each call runs it in a task of the
/// main queue, with copies of the arguments. The queue outlives whoever calls.
template <class Callback>
[[nodiscard]] auto onMain(MainQueue &queue, Callback callback) {
    return [&queue, callback = std::move(callback)](const auto &...arguments) {
        queue.post([callback, arguments...]() mutable { callback(arguments...); });
    };
}

/// As above, and does nothing once the owner of the lifetime is gone. That is looked at in the task: on another thread
/// the owner could end between the look and the use.
template <class Callback>
[[nodiscard]] auto onMain(MainQueue &queue, const Lifetime &lifetime, Callback callback) {
    return onMain(queue, lifetime.guard(std::move(callback)));
}

} // namespace velmo
