#include "ui/floating/visible_frame.h"

#include "platform/floating_windows.h"

#include <QScreen>

namespace velmo {

QRect visibleFrame(const QScreen &screen, const FloatingWindows &desktop) {
    // Of one screen Qt knows it from the window manager, also where panels are no windows; of several it does not.
    if (screen.virtualSiblings().size() == 1)
        return screen.availableGeometry();
    // Scaled screens keep the place of their upper left corner.
    const QPoint corner = screen.geometry().topLeft();
    const qreal ratio = screen.devicePixelRatio();
    const QRect free = desktop.freeOf({corner, screen.size() * ratio});
    return {corner + (free.topLeft() - corner) / ratio, free.size() / ratio};
}

} // namespace velmo
