#pragma once

#include "platform/linux/x11/server/connection.h"

#include <deque>
#include <functional>

namespace velmo::x11 {

/// The time of the X server, by which it decides who owns a selection (ICCCM 2.1 asks for it in place of
/// "now"). When the answer comes, every event from before that time has been handled. The loop's thread.
class ServerTime {
public:
    using Answer = std::function<void(xcb_timestamp_t)>;

    explicit ServerTime(Connection &connection);

    void ask(Answer answer);
    void handle(const xcb_generic_event_t &event);

private:
    Connection &m_connection;
    xcb_window_t m_window;
    xcb_atom_t m_property;
    std::deque<Answer> m_waiting;
};

/// Whether one server time is before another. They wrap around every 49.7 days.
[[nodiscard]] inline bool isBefore(xcb_timestamp_t time, xcb_timestamp_t other) {
    return static_cast<int32_t>(time - other) < 0;
}

} // namespace velmo::x11
