#pragma once

#include <QString>

namespace velmo {

class Preferences;

/// Which keys can start a dictation. A key is named as XKB names its position ("RCTL"), so the choice
/// survives a change of layout.

/// Right Control: on nearly every keyboard, seldom used, and no character is written with it.
inline constexpr QStringView kDefaultTriggerKey = u"RCTL";

/// Why the key cannot be the trigger key, as a sentence for the person; null when it can be chosen.
///
///   refusalOfTriggerKey(u"RCTL", 0xffe4)  null
///   refusalOfTriggerKey(u"AC01", 'a')     "This key is needed for writing."
///   refusalOfTriggerKey(u"RALT", 0xffea)  null: plain Alt
///   refusalOfTriggerKey(u"RALT", 0xfe03)  "AltGr is held while …": a layout that writes "@" with it
///
/// @param symbol the X key symbol of the key without modifiers; 0 when it is not known, which leaves out what
/// depends on the layout.
[[nodiscard]] QString refusalOfTriggerKey(QStringView name, quint32 symbol = 0);

/// How people call the key: "Right Control", "Menu"; the XKB name itself for a key without a common name.
[[nodiscard]] QString triggerKeyLabel(QStringView name);

/// The chosen key; the default one when none is stored or what is stored cannot be the trigger key.
[[nodiscard]] QString triggerKey(const Preferences &preferences);

} // namespace velmo
