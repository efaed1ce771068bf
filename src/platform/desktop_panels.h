#pragma once

#include "base/interface.h"

#include <QList>
#include <QRect>

namespace velmo {

/// The bars of the desktop along the edges of the screen: panels, docks.
class DesktopPanels : public Interface {
public:
    /// Where they are, in device pixels of the desktop. Main thread; asks the desktop.
    [[nodiscard]] virtual QList<QRect> frames() const = 0;
};

} // namespace velmo
