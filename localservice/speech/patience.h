#pragma once

#include <atomic>
#include <chrono>

namespace velmo::localservice {

/// How long somebody waits for a text; without end at first. Shared by who waits and who works. Any thread.
class Patience {
public:
    using Clock = std::chrono::steady_clock;

    explicit Patience(Clock::time_point end = Clock::time_point::max()) { endAt(end); }

    void endAt(Clock::time_point end) { m_end = end.time_since_epoch().count(); }
    void giveUp() { endAt(Clock::time_point::min()); }

    [[nodiscard]] Clock::time_point end() const { return Clock::time_point(Clock::duration(m_end.load())); }
    [[nodiscard]] bool isOver() const { return Clock::now() >= end(); }

private:
    std::atomic<Clock::rep> m_end;
};

} // namespace velmo::localservice
