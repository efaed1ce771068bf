#pragma once

#include "platform/linux/secret_service/glib_owned.h"

#include <chrono>
#include <condition_variable>
#include <gio/gio.h>
#include <mutex>
#include <thread>

namespace velmo {

/// Cancels what runs under its cancellable once its time is over.
class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds patience)
        : m_cancellable(g_cancellable_new()),
          m_thread([this, patience](const std::stop_token &stop) { wait(stop, patience); }) {}

    [[nodiscard]] GCancellable *cancellable() const { return m_cancellable.get(); }
    [[nodiscard]] bool isOver() const { return g_cancellable_is_cancelled(m_cancellable.get()) != FALSE; }

private:
    void wait(const std::stop_token &stop, std::chrono::milliseconds patience) {
        std::unique_lock lock(m_mutex);
        m_wake.wait_for(lock, stop, patience, [] { return false; });
        if (!stop.stop_requested())
            g_cancellable_cancel(m_cancellable.get());
    }

    OwnedObject<GCancellable> m_cancellable;
    std::mutex m_mutex;
    std::condition_variable_any m_wake;
    std::jthread m_thread; // last: it uses the rest
};

} // namespace velmo
