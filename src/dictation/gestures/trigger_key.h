#pragma once

#include <QString>

namespace velmo {

class KeyboardKeys;
class Preferences;

/// The name of the chosen key; the default one when none is stored or what is stored cannot be the trigger key.
[[nodiscard]] QString triggerKey(const Preferences &preferences, const KeyboardKeys &keyboard);

} // namespace velmo
