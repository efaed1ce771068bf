#pragma once

#include "base/main_queue.h"

#include <deque>
#include <list>
#include <mutex>

namespace velmo::testing {

/// The main queue of a test: nothing runs and no time passes unless the test says so.
class ManualMainQueue final : public MainQueue {
public:
    ManualMainQueue();
    ~ManualMainQueue() override;

    void post(Task task) override;
    [[nodiscard]] Timer after(std::chrono::milliseconds delay, Task task) override;
    [[nodiscard]] Date now() const override { return m_now; }
    [[nodiscard]] std::chrono::nanoseconds uptime() const override { return m_uptime; }

    /// Runs what has been posted, and what that posts, until nothing is left.
    void runPosted();

    /// Lets time pass: runs posted tasks, then each delayed task at its moment, in order of their moments.
    void advance(std::chrono::nanoseconds by);

    /// Changes the wall clock alone, as a correction of the system's time does.
    void setNow(Date now) { m_now = now; }

    [[nodiscard]] std::size_t pendingTimers() const;

private:
    struct Pending;
    class Handle;

    std::mutex m_mutex; // of m_posted: other threads post too
    std::deque<Task> m_posted;
    std::list<std::shared_ptr<Pending>> m_delayed;
    Date m_now;
    std::chrono::nanoseconds m_uptime{std::chrono::seconds(1000)};
};

} // namespace velmo::testing
