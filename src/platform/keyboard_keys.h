#pragma once

#include "base/interface.h"

#include <QString>

namespace velmo {

/// One key of the keyboard.
struct PhysicalKey {
    QString
        name; ///< Of its position ("RCTL"), so that it survives a change of layout; empty for a key without one.
    QString refusal; ///< Why it cannot be the trigger key, as a sentence for the person; null when it can.
};

/// The keys of the keyboard, as far as they may start a dictation. A key is known by the name that the platform gives
/// its position; the choice is stored by it. Main thread.
class KeyboardKeys : public Interface {
public:
    /// The key that an event came from. `scanCode` is QKeyEvent::nativeScanCode.
    [[nodiscard]] virtual PhysicalKey keyAt(quint32 scanCode) const = 0;

    /// The trigger key of a person who has chosen none.
    [[nodiscard]] virtual QString defaultTriggerKey() const = 0;

    /// Why the key of that name cannot be the trigger key, whatever the layout makes of it; null when it can.
    [[nodiscard]] virtual QString refusalOf(QStringView name) const = 0;

    /// How people call the key: "Right Control", "Menu"; the name itself for a key without a common one.
    [[nodiscard]] virtual QString labelOf(QStringView name) const = 0;
};

} // namespace velmo
