#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "platform/event_tap.h"

#include <functional>
#include <memory>

namespace velmo {

/// A key with modifiers.
struct Hotkey {
    char letter; ///< 'a' to 'z': the key that writes it.
    KeyFlags modifiers;
};

/// Keys that work whatever application has focus, under any state of the locks (Caps Lock, Num Lock).
class GlobalHotkey : public Interface {
public:
    /// A registered hot key; dropping it gives the key back.
    class Registration : public Interface {};

    /// The platform's own number for why the key cannot be had; never 0.
    using Status = int;

    /// Main thread. `pressed` is called on any thread, once for a press however long it is held, and not
    /// again once the registration is dropped.
    [[nodiscard]] virtual Result<std::unique_ptr<Registration>, Status>
    registerHotkey(const Hotkey &hotkey, std::function<void()> pressed) = 0;
};

} // namespace velmo
