#pragma once

#include <QRect>

class QScreen;

namespace velmo {

class FloatingWindows;

/// What panels and docks leave free of the screen, in logical pixels. Asks the desktop.
[[nodiscard]] QRect visibleFrame(const QScreen &screen, const FloatingWindows &desktop);

} // namespace velmo
