#include "text/modes/modes.h"

#include "store/custom_modes.h"
#include "store/preference_keys.h"
#include "text/tables/built_in_modes.h"

#include <algorithm>

namespace velmo {

QList<Mode> allModes(const Preferences &preferences) {
    QList<Mode> modes;
    for (const BuiltInMode &mode : builtInModes()) {
        modes.append({mode.id.toString(), mode.name.toString(), mode.icon.toString(),
                      mode.description.toString(), mode.systemPrompt.toString(), true});
    }
    for (const CustomMode &mode : customModes(preferences))
        modes.append({mode.id, mode.name, mode.icon, QString(), mode.systemPrompt, false});
    return modes;
}

QString selectedModeId(const Preferences &preferences) {
    return preferences.string(keys::selectedMode).value_or(QString(kDefaultModeId));
}

QString selectedModePrompt(const Preferences &preferences) {
    const QString id = selectedModeId(preferences);
    if (auto prompt = customModePrompt(preferences, id))
        return *prompt;
    const auto builtIn = std::ranges::find(builtInModes(), QStringView(id), &BuiltInMode::id);
    return builtIn == builtInModes().end() ? QString() : builtIn->systemPrompt.toString();
}

bool smartFormatting(const Preferences &preferences) {
    return preferences.boolean(keys::smartFormatting).value_or(true);
}

} // namespace velmo
