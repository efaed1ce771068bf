#include "platform/linux/x11/server/server_time.h"

namespace velmo::x11 {

ServerTime::ServerTime(Connection &connection)
    : m_connection(connection),
      m_window(connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE)),
      m_property(connection.atom("VELMO_TIME")) {}

void ServerTime::ask(Answer answer) {
    m_waiting.push_back(std::move(answer));
    // Appending nothing changes nothing, and still is an event that bears the time.
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_APPEND, m_window, m_property, XCB_ATOM_INTEGER, 32,
                        0, nullptr);
}

void ServerTime::handle(const xcb_generic_event_t &event) {
    if (kindOf(event) != XCB_PROPERTY_NOTIFY || m_waiting.empty())
        return;
    const auto &change = as<xcb_property_notify_event_t>(event);
    if (change.window != m_window)
        return;
    const Answer answer = std::move(m_waiting.front());
    m_waiting.pop_front();
    answer(change.time);
}

} // namespace velmo::x11
