#pragma once

#include "platform/linux/x11/server/connection.h"

#include <vector>

namespace velmo::x11 {

// Values of a window's properties. All ask the server.

/// The bytes of a property of that type, cut after the longest that is of use; empty where there is none.
[[nodiscard]] QByteArray bytesOf(const Connection &connection, xcb_window_t window, xcb_atom_t property,
                                 xcb_atom_t type, uint32_t longest = 1024);

/// The value of a property that is a list of numbers; empty where there is none.
[[nodiscard]] std::vector<uint32_t> numbersOf(const Connection &connection, xcb_window_t window,
                                              xcb_atom_t property,
                                              xcb_atom_t type = XCB_GET_PROPERTY_TYPE_ANY);

/// What a window says about the program it belongs to (WM_CLASS, ICCCM 4.1.2.5).
struct WindowClass {
    QString instance; ///< Mostly the name of the program file.
    QString name;     ///< Of the kind of program.
};
[[nodiscard]] WindowClass windowClassOf(const Connection &connection, xcb_window_t window);

} // namespace velmo::x11
