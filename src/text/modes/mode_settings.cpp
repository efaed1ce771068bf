#include "text/modes/mode_settings.h"

#include "base/characters.h"
#include "base/uuid.h"
#include "store/custom_modes.h"
#include "store/preference_keys.h"

namespace velmo {

void ModeSettings::replaceRetiredSelection() {
    if (selectedModeId(m_preferences) == u"fast")
        choose(QString(kDefaultModeId));
}

void ModeSettings::choose(const QString &id) {
    m_preferences.set(keys::selectedMode, id);
}

void ModeSettings::setSmartFormatting(bool isOn) {
    m_preferences.set(keys::smartFormatting, isOn);
}

void ModeSettings::confirm(const ModeDraft &draft) {
    const CustomMode mode = {draft.editedId.value_or(newUpperUuid()), trimmedOfBlanks(draft.name).toString(),
                             trimmedOfBlanks(draft.systemPrompt).toString(), draft.icon};
    if (draft.editedId)
        replaceCustomMode(m_preferences, mode);
    else
        addCustomMode(m_preferences, mode);
}

void ModeSettings::remove(const QString &id) {
    removeCustomMode(m_preferences, id);
    if (selectedModeId(m_preferences) == id)
        choose(QString(kDefaultModeId));
}

} // namespace velmo
