#pragma once

#include <chrono>
#include <cstdint>

namespace velmo::x11 {

class Connection;

/// Turns the server's times (milliseconds in 32 bits, which start again every 49.7 days) into those of
/// MainQueue::uptime. On one machine both read the same clock; a server elsewhere has one of its own, so the
/// difference is measured.
class ServerClock {
public:
    using Time = uint32_t;

    /// `server` and `local` are the same moment.
    ServerClock(Time server, std::chrono::nanoseconds local);

    /// Asks the server what time it is. Before events are waited for: what arrives meanwhile is lost.
    [[nodiscard]] static ServerClock measure(Connection &connection);

    /// The moment of an event that has been read at `now`. Never later than that.
    [[nodiscard]] std::chrono::nanoseconds toUptime(Time event, std::chrono::nanoseconds now) const;

private:
    uint32_t m_ahead; ///< How far the server's clock is ahead, in milliseconds modulo 2^32.
};

/// Now, on the clock of MainQueue::uptime.
[[nodiscard]] std::chrono::nanoseconds uptime();

} // namespace velmo::x11
