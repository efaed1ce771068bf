#pragma once

#include "platform/linux/x11/server/connection.h"

#include <chrono>
#include <deque>
#include <functional>

namespace velmo::x11 {

// The server's time: milliseconds in 32 bits, which start again every 49.7 days.

/// Asks for the time without waiting. The server decides by it who owns a selection (ICCCM 2.1 asks for it in
/// place of "now"). When the answer comes, every event from before that time has been handled. The loop's
/// thread.
class ServerTime {
public:
    using Answer = std::function<void(xcb_timestamp_t)>;

    explicit ServerTime(Connection &connection);

    void ask(Answer answer);
    void handle(const xcb_generic_event_t &event);

private:
    Connection &m_connection;
    xcb_window_t m_window;
    std::deque<Answer> m_waiting;
};

/// Whether one server time is before another.
[[nodiscard]] inline bool isBefore(xcb_timestamp_t time, xcb_timestamp_t other) {
    return static_cast<int32_t>(time - other) < 0;
}

/// Turns the server's times into those of MainQueue::uptime. On one machine both read the same clock; a server
/// elsewhere has one of its own, so the difference is measured.
class ServerClock {
public:
    /// `server` and `local` are the same moment.
    ServerClock(xcb_timestamp_t server, std::chrono::nanoseconds local);

    /// Asks the server what time it is. Before events are waited for: what arrives meanwhile is lost.
    [[nodiscard]] static ServerClock measure(Connection &connection);

    /// The moment of an event that has been read at `now`. Never later than that.
    [[nodiscard]] std::chrono::nanoseconds toUptime(xcb_timestamp_t event,
                                                    std::chrono::nanoseconds now) const;

private:
    uint32_t m_ahead; ///< How far the server's clock is ahead, in milliseconds modulo 2^32.
};

/// Now, on the clock of MainQueue::uptime.
[[nodiscard]] std::chrono::nanoseconds uptime();

} // namespace velmo::x11
