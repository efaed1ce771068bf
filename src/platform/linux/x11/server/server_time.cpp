#include "platform/linux/x11/server/server_time.h"

#include <algorithm>
#include <optional>

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

/// Closer than this the two clocks are the same one, and the rest is the time the answer took to come.
constexpr int32_t kSameClockMs = 1000;

uint32_t milliseconds(std::chrono::nanoseconds time) {
    return static_cast<uint32_t>(time / 1ms);
}

/// Appending nothing to a property changes nothing, and still is an event that bears the time.
void askForTime(const Connection &connection, xcb_window_t window) {
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        0, nullptr);
}

/// The time, when the event is the answer for that window.
std::optional<xcb_timestamp_t> answerIn(const xcb_generic_event_t &event, xcb_window_t window) {
    if (kindOf(event) != XCB_PROPERTY_NOTIFY)
        return std::nullopt;
    const auto &change = as<xcb_property_notify_event_t>(event);
    return change.window == window ? std::optional(change.time) : std::nullopt;
}

} // namespace

ServerTime::ServerTime(Connection &connection)
    : m_connection(connection), m_window(connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE)) {}

void ServerTime::ask(Answer answer) {
    m_waiting.push_back(std::move(answer));
    askForTime(m_connection, m_window);
}

void ServerTime::handle(const xcb_generic_event_t &event) {
    const auto time = answerIn(event, m_window);
    if (!time || m_waiting.empty())
        return;
    const Answer answer = std::move(m_waiting.front());
    m_waiting.pop_front();
    answer(*time);
}

ServerClock::ServerClock(xcb_timestamp_t server, std::chrono::nanoseconds local)
    : m_ahead(server - milliseconds(local)) {
    const auto difference = static_cast<int32_t>(m_ahead);
    if (difference > -kSameClockMs && difference <= 0)
        m_ahead = 0;
}

ServerClock ServerClock::measure(Connection &connection) {
    const xcb_window_t window = connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    askForTime(connection, window);
    xcb_flush(connection.xcb());
    std::optional<xcb_timestamp_t> time;
    while (!time) {
        const Owned<xcb_generic_event_t> event(xcb_wait_for_event(connection.xcb()));
        time = event ? answerIn(*event, window) : milliseconds(uptime()); // the server has gone
    }
    xcb_destroy_window(connection.xcb(), window);
    return {*time, uptime()};
}

std::chrono::nanoseconds ServerClock::toUptime(xcb_timestamp_t event, std::chrono::nanoseconds now) const {
    const auto age = static_cast<int32_t>(milliseconds(now) + m_ahead - event);
    return now - std::max(age, 0) * 1ms;
}

std::chrono::nanoseconds uptime() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

} // namespace velmo::x11
