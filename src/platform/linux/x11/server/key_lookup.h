#pragma once

#include "platform/linux/x11/server/connection.h"

#include <span>
#include <vector>

namespace velmo::x11 {

/// The keys that give these symbols (keysyms) when they are pressed alone; empty when one of them is missing.
/// The layout that is active counts first, then the others the person has: programs find shortcuts there too,
/// so that Control+V works while Greek is being written. Asks the server.
[[nodiscard]] std::vector<xcb_keycode_t> keysGiving(std::span<const xcb_keysym_t> symbols,
                                                    const Connection &connection);

} // namespace velmo::x11
