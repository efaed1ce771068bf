#include "platform/linux/x11/server/server_clock.h"

#include "platform/linux/x11/server/connection.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

/// Closer than this the two clocks are the same one, and the rest is the time the answer took to come.
constexpr int32_t kSameClockMs = 1000;

uint32_t milliseconds(std::chrono::nanoseconds time) {
    return static_cast<uint32_t>(time / 1ms);
}

} // namespace

ServerClock::ServerClock(Time server, std::chrono::nanoseconds local)
    : m_ahead(server - milliseconds(local)) {
    const auto difference = static_cast<int32_t>(m_ahead);
    if (difference > -kSameClockMs && difference <= 0)
        m_ahead = 0;
}

ServerClock ServerClock::measure(Connection &connection) {
    // The server stamps a change of a property, even one that changes nothing.
    const xcb_window_t window = connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        0, nullptr);
    xcb_flush(connection.xcb());
    Time time = milliseconds(uptime());
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(connection.xcb())}) {
        if (kindOf(*event) != XCB_PROPERTY_NOTIFY)
            continue;
        time = as<xcb_property_notify_event_t>(*event).time;
        break;
    }
    xcb_destroy_window(connection.xcb(), window);
    return {time, uptime()};
}

std::chrono::nanoseconds ServerClock::toUptime(Time event, std::chrono::nanoseconds now) const {
    const auto age = static_cast<int32_t>(milliseconds(now) + m_ahead - event);
    return now - std::max(age, 0) * 1ms;
}

std::chrono::nanoseconds uptime() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

} // namespace velmo::x11
