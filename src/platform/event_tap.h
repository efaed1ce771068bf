#pragma once

#include "base/interface.h"

#include <QFlags>
#include <QString>
#include <chrono>
#include <functional>

namespace velmo {

/// The modifiers that matter to the trigger key.
enum class KeyFlag : quint32 {
    CapsLock = 0x10000,
    Shift = 0x20000,
    Control = 0x40000,
    Option = 0x80000,   ///< Alt and AltGr.
    Command = 0x100000, ///< Super.
    /// The trigger key itself, whichever key of the keyboard that is; its own meaning as a modifier is left
    /// out.
    SecondaryFunction = 0x800000,
};
Q_DECLARE_FLAGS(KeyFlags, KeyFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(KeyFlags)

enum class TapEventType {
    FlagsChanged, ///< The trigger key went down or up; `flags` say which.
    OtherPressed, ///< Another key or a mouse button went down while the trigger key is held.
    /// The system took the tap away because answers did not come in time. No press is believed held any more:
    /// its release was reported first.
    DisabledByTimeout,
    DisabledByUserInput, ///< The same, because the person asked for it.
};

struct TapEvent {
    TapEventType type;
    KeyFlags flags; ///< After the change; of FlagsChanged alone.
    /// When it happened at the keyboard, on the clock of MainQueue::uptime.
    std::chrono::nanoseconds time;
};

/// What becomes of the event that was reported. Only flag changes can be kept from other applications, and
/// only as far as the platform allows at that moment: suppression is a wish.
enum class TapAnswer { Pass, Suppress };

/// Sees the trigger key before other applications do. It reports what people do at a keyboard and a mouse,
/// never what programs inject. A key that repeats is reported once. Every press that was answered with
/// Suppress is followed by its release, without any other flag, whatever else is held by then and even when
/// the keyboard is unplugged or the machine slept in between.
class EventTap : public Interface {
public:
    /// Runs on a thread of the tap's own while the keyboard waits for the answer: it must not wait for
    /// anything, least of all for the main thread.
    using Handler = std::function<TapAnswer(const TapEvent &event)>;

    /// Main thread; returns once the tap runs. `triggerKey` is the XKB name of the key ("RCTL").
    /// @return false when keys cannot be observed here or the keyboard has no such key.
    [[nodiscard]] virtual bool start(const QString &triggerKey, Handler handler) = 0;

    /// Ends the tap. The handler is not called again once this returns. Main thread; harmless when it does
    /// not run.
    virtual void stop() = 0;

    /// Takes the tap back after it was disabled. To be called by the handler.
    virtual void enable() = 0;
};

} // namespace velmo
