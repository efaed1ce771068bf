#pragma once

#include <QList>
#include <QRect>

namespace velmo {

/// The bars of the desktop along the edges of the screen: panels, docks.
class DesktopPanels {
public:
    DesktopPanels() = default;
    DesktopPanels(const DesktopPanels &) = delete;
    DesktopPanels &operator=(const DesktopPanels &) = delete;
    virtual ~DesktopPanels() = default;

    /// Where they are, in device pixels of the desktop. Main thread; asks the desktop.
    [[nodiscard]] virtual QList<QRect> frames() const = 0;
};

} // namespace velmo
