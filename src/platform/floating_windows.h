#pragma once

#include "base/interface.h"

#include <QList>
#include <QRect>
#include <functional>
#include <memory>

namespace velmo {

/// What a desktop does for windows of ours that float over all others and that no window manager manages. A window goes
/// by its number on the display. Main thread.
class FloatingWindows : public Interface {
public:
    /// Ends, when it is dropped, what it was returned for.
    class Handle : public Interface {};

    /// Gives the keyboard back when it is dropped.
    class KeyboardLoan : public Handle {
    public:
        /// Whether the window still has the keys, but for those that somebody grabs. Asks the desktop.
        [[nodiscard]] virtual bool isActive() const = 0;
    };

    /// Each is called as a task of the main queue.
    struct Events {
        std::function<void()> compositionChanged; ///< `isComposited` has another answer.
        std::function<void()> restacked;          ///< Managed windows came forward, perhaps over ours.
        std::function<void()> panelsChanged;      ///< `freeOf` may have another answer.
    };

    /// Whether what is translucent looks so. Without a compositor the clear parts of a window are black.
    [[nodiscard]] virtual bool isComposited() const = 0;

    [[nodiscard]] virtual std::unique_ptr<Handle> watch(Events events) = 0;

    /// What panels and docks leave free of a screen. Asks the desktop.
    /// @param screen in device pixels of the desktop, as the answer is.
    [[nodiscard]] virtual QRect freeOf(QRect screen) const = 0;

    /// Lets clicks outside of the rectangles through to whatever lies beneath the window.
    /// @param region in device pixels from the window's upper left corner.
    virtual void setInputRegion(quint64 window, const QList<QRect> &region) = 0;

    /// Has the window get the keys that are pressed. Once the handle is dropped, whoever got them before gets them
    /// again, unless somebody else has taken them meanwhile.
    [[nodiscard]] virtual std::unique_ptr<KeyboardLoan> borrowKeyboard(quint64 window) = 0;
};

} // namespace velmo
