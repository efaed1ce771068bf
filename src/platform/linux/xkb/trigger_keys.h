#pragma once

#include "platform/keyboard_keys.h"

#include <xkbcommon/xkbcommon.h>

namespace velmo::xkb {

/// Which keys can start a dictation, by XKB's names of their positions.
class TriggerKeys : public KeyboardKeys {
public:
    /// Right Control: on nearly every keyboard, seldom used, and no character is written with it.
    [[nodiscard]] QString defaultTriggerKey() const override;
    [[nodiscard]] QString refusalOf(QStringView name) const override;
    [[nodiscard]] QString labelOf(QStringView name) const override;
};

/// Why the key cannot be the trigger key, as a sentence for the person; null when it can be chosen.
///
///   refusalOfTriggerKey(u"RCTL", XKB_KEY_Control_R)         null
///   refusalOfTriggerKey(u"AC01", XKB_KEY_a)                 "This key is needed for writing."
///   refusalOfTriggerKey(u"RALT", XKB_KEY_Alt_R)             null: plain Alt
///   refusalOfTriggerKey(u"RALT", XKB_KEY_ISO_Level3_Shift)  "AltGr is held while …": a layout that writes "@" with it
///
/// @param symbol what the key gives when it is pressed alone; 0 when it is not known, which leaves out what depends on
/// the layout.
[[nodiscard]] QString refusalOfTriggerKey(QStringView name, xkb_keysym_t symbol);

} // namespace velmo::xkb
