#pragma once

#include "platform/linux/x11/server/loop.h"

#include <functional>
#include <vector>

namespace velmo::x11 {

/// Asks the desktop's clipboard manager to take over what we offer (SAVE_TARGETS, as freedesktop.org
/// describes clipboard managers). The manager then reads it like any other program. The loop's thread.
class ManagerRequest {
public:
    using Done = std::function<void()>;

    ManagerRequest(Connection &connection, Loop &loop, xcb_window_t owner);

    /// `done` comes once: when the manager has answered, at once where there is none, after a second at the
    /// latest.
    void send(const std::vector<uint32_t> &targets, xcb_timestamp_t time, Done done);
    void handle(const xcb_generic_event_t &event);

private:
    void finish();

    Connection &m_connection;
    Loop &m_loop;
    xcb_window_t m_owner;
    xcb_atom_t m_manager;
    Done m_done;
    Loop::Timer m_deadline;
};

} // namespace velmo::x11
