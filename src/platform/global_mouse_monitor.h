#pragma once

#include "base/interface.h"

#include <QPoint>
#include <functional>
#include <memory>

namespace velmo {

/// Hears of mouse clicks over any window, without taking them from anybody.
class GlobalMouseMonitor : public Interface {
public:
    /// A running watch; dropping it ends it. Main thread.
    class Watch : public Interface {};

    /// Where the pointer was, in device pixels from the top left corner of the desktop.
    using Clicked = std::function<void(QPoint position)>;

    /// Calls back on the main thread for each left or right button that goes down. Main thread.
    /// @return nothing when clicks cannot be watched here.
    [[nodiscard]] virtual std::unique_ptr<Watch> watch(Clicked clicked) = 0;
};

} // namespace velmo
