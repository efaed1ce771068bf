#pragma once

#include "platform/linux/x11/server/connection.h"

#include <QRect>

namespace velmo::x11 {

/// What panels leave free of a screen, by the room each asks for along an edge of the desktop (_NET_WM_STRUT_PARTIAL of the
/// Extended Window Manager Hints); the work area that window managers tell is one for all screens together. Asks the
/// server.
/// @param screen in pixels of the desktop, as the answer is.
[[nodiscard]] QRect freeOf(Connection &connection, QRect screen);

} // namespace velmo::x11
