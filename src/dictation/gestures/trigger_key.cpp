#include "dictation/gestures/trigger_key.h"

#include "platform/keyboard_keys.h"
#include "store/preference_keys.h"
#include "store/preferences.h"

namespace velmo {

QString triggerKey(const Preferences &preferences, const KeyboardKeys &keyboard) {
    const QString stored = preferences.string(keys::triggerKey).value_or(QString());
    return keyboard.refusalOf(stored).isNull() ? stored : keyboard.defaultTriggerKey();
}

} // namespace velmo
