#include "platform/linux/x11/insertion/manager_request.h"

#include "platform/linux/x11/server/selections.h"

#include <utility>

using namespace std::chrono_literals;

namespace velmo::x11 {

ManagerRequest::ManagerRequest(Connection &connection, Loop &loop, xcb_window_t owner)
    : m_connection(connection),
      m_loop(loop),
      m_owner(owner),
      m_manager(connection.atom("CLIPBOARD_MANAGER")) {}

void ManagerRequest::send(const std::vector<uint32_t> &targets, xcb_timestamp_t time, Done done) {
    if (ownerOf(m_manager, m_connection) == XCB_WINDOW_NONE) {
        done();
        return;
    }
    finish();
    m_done = std::move(done);
    m_deadline = m_loop.after(1s, [this] { finish(); });
    const xcb_atom_t property = m_connection.atom("VELMO_SAVE_TARGETS");
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_owner, property, XCB_ATOM_ATOM, 32,
                        static_cast<uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(m_connection.xcb(), m_owner, m_manager, m_connection.atom("SAVE_TARGETS"), property,
                          time);
}

void ManagerRequest::handle(const xcb_generic_event_t &event) {
    if (kindOf(event) != XCB_SELECTION_NOTIFY)
        return;
    const auto &answer = as<xcb_selection_notify_event_t>(event);
    if (answer.requestor == m_owner && answer.selection == m_manager)
        finish();
}

void ManagerRequest::finish() {
    m_deadline.reset();
    if (const Done done = std::exchange(m_done, {}))
        done();
}

} // namespace velmo::x11
