#pragma once

#include "platform/linux/x11/server/connection.h"

namespace velmo::x11 {

/// The window that owns the selection; none when nobody does. Asks the server.
[[nodiscard]] xcb_window_t ownerOf(xcb_atom_t selection, const Connection &connection);

/// Begins to listen for other owners of the selection, and for none. Asks the server.
/// @return the kind of the events (xcb_xfixes_selection_notify_event_t); 0, which is none, without the extension.
[[nodiscard]] int selectOwnerChanges(xcb_atom_t selection, const Connection &connection);

} // namespace velmo::x11
