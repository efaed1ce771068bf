#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <httplib.h>
#include <mutex>

namespace velmo::localservice {

/// A thread for each connection, up to a bound: a fixed small pool, as the library has by default, is blocked
/// for everybody by as many stalled clients as it has threads. Connections beyond the bound wait for a
/// thread.
class ConnectionThreads final : public httplib::TaskQueue {
public:
    explicit ConnectionThreads(int bound) : m_bound(bound) {}

    void enqueue(std::function<void()> serve) override;

    /// Waits until all connections, the waiting ones too, have been served.
    void shutdown() override;

private:
    void run(std::function<void()> serve);
    [[nodiscard]] bool start(std::function<void()> serve);

    const int m_bound;
    std::mutex m_mutex;
    std::condition_variable m_ended;
    int m_running = 0;
    std::deque<std::function<void()>> m_waiting;
};

} // namespace velmo::localservice
