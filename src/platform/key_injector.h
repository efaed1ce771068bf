#pragma once

#include "base/interface.h"

#include <functional>

namespace velmo {

/// The keys with which programs paste.
enum class PasteShortcut {
    ControlV,
    ControlShiftV,
    ShiftInsert,
};

/// Keys pressed on the person's behalf, in whatever window has focus. Main thread; no call waits.
class KeyInjector : public Interface {
public:
    /// Whether this session lets one program press keys in another at all.
    [[nodiscard]] virtual bool canInject() const = 0;

    /// Presses and releases the shortcut, and only that: modifiers the person holds are released first and
    /// not pressed again (a second press by us would outlive their own release). `done` tells, as a task of
    /// the main queue, whether the keys were sent; what the focused window does with them is not known here.
    virtual void press(PasteShortcut shortcut, std::function<void(bool sent)> done) = 0;
};

} // namespace velmo
