#include "ui/models/trigger_key_name.h"

#include "dictation/gestures/trigger_key.h"
#include "platform/keyboard_keys.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"

namespace velmo {

TriggerKeyName::TriggerKeyName(const Preferences &preferences, PreferenceWatch &watch,
                               const KeyboardKeys &keyboard)
    : m_preferences(preferences), m_keyboard(keyboard) {
    watch.follow(keys::triggerKey, this, [this] { refresh(); });
    refresh();
}

void TriggerKeyName::refresh() {
    const QString label = m_keyboard.labelOf(triggerKey(m_preferences, m_keyboard));
    if (label == m_label)
        return;
    m_label = label;
    m_inText = QString(label).replace(u' ', QChar::Nbsp);
    Q_EMIT changed();
}

} // namespace velmo
