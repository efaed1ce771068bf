#pragma once

#include "platform/linux/x11/server/connection.h"

#include <vector>

namespace velmo::x11 {

/// The value of a property of a window that is a list of numbers; empty where there is none. Asks the server.
[[nodiscard]] std::vector<uint32_t> numbers(Connection &connection, xcb_window_t window,
                                            const char *property);

} // namespace velmo::x11
