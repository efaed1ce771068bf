#include "support/manual_main_queue.h"

#include <algorithm>

namespace velmo::testing {

struct ManualMainQueue::Pending {
    std::chrono::nanoseconds due;
    Task task;
    bool cancelled = false;
};

class ManualMainQueue::Handle final : public DelayedTask {
public:
    explicit Handle(std::shared_ptr<Pending> pending) : m_pending(std::move(pending)) {}
    ~Handle() override { m_pending->cancelled = true; }

private:
    std::shared_ptr<Pending> m_pending;
};

ManualMainQueue::ManualMainQueue() : m_now(std::chrono::sys_days(std::chrono::year(2026) / 3 / 14)) {
    m_now += std::chrono::hours(12);
}

ManualMainQueue::~ManualMainQueue() = default;

void ManualMainQueue::post(Task task) {
    const std::lock_guard lock(m_mutex);
    m_posted.push_back(std::move(task));
}

MainQueue::Timer ManualMainQueue::after(std::chrono::milliseconds delay, Task task) {
    auto pending = std::make_shared<Pending>(Pending{m_uptime + delay, std::move(task)});
    m_delayed.push_back(pending);
    return std::make_unique<Handle>(std::move(pending));
}

void ManualMainQueue::runPosted() {
    for (;;) {
        Task task;
        {
            const std::lock_guard lock(m_mutex);
            if (m_posted.empty())
                return;
            task = std::move(m_posted.front());
            m_posted.pop_front();
        }
        task();
    }
}

void ManualMainQueue::advance(std::chrono::nanoseconds by) {
    const auto end = m_uptime + by;
    for (;;) {
        runPosted();
        m_delayed.remove_if([](const auto &pending) { return pending->cancelled; });
        const auto next = std::min_element(m_delayed.begin(), m_delayed.end(),
                                           [](const auto &a, const auto &b) { return a->due < b->due; });
        if (next == m_delayed.end() || (*next)->due > end)
            break;
        const auto pending = std::move(*next);
        m_delayed.erase(next);
        const auto step = std::max(pending->due - m_uptime, std::chrono::nanoseconds(0));
        m_uptime += step;
        m_now += std::chrono::duration_cast<Date::duration>(step);
        pending->task();
    }
    m_now += std::chrono::duration_cast<Date::duration>(end - m_uptime);
    m_uptime = end;
}

std::size_t ManualMainQueue::pendingTimers() const {
    return static_cast<std::size_t>(std::count_if(m_delayed.begin(), m_delayed.end(),
                                                  [](const auto &pending) { return !pending->cancelled; }));
}

} // namespace velmo::testing
