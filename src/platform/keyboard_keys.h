#pragma once

#include "base/interface.h"

#include <QString>
#include <optional>

namespace velmo {

/// One key of the keyboard.
struct PhysicalKey {
    QString name;   ///< XKB's name of the position ("RCTL", "AC01"); it survives a change of layout.
    quint32 symbol; ///< X key symbol the layout gives it without modifiers; 0 when none.
};

/// Which key of the keyboard a key event came from.
class KeyboardKeys : public Interface {
public:
    /// `scanCode` is QKeyEvent::nativeScanCode. Main thread. Nothing for a key without a name.
    [[nodiscard]] virtual std::optional<PhysicalKey> keyAt(quint32 scanCode) const = 0;
};

} // namespace velmo
