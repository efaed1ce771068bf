#pragma once

#include "text/modes/modes.h"

#include <optional>

namespace velmo {

/// What the editor of a custom mode holds.
struct ModeDraft {
    std::optional<QString> editedId; ///< Of the mode that is edited; absent for a new one.
    QString name;
    QString systemPrompt;
    QString icon;
};

/// The rules of the mode page, without its look. Every change is stored at once and applies to the next dictation.
/// Main thread; `preferences` must outlive it.
class ModeSettings {
public:
    explicit ModeSettings(Preferences &preferences) : m_preferences(preferences) {}

    /// The page appears: a selection that an earlier version offered and that is gone becomes the default.
    void replaceRetiredSelection();

    void choose(const QString &id);
    void setSmartFormatting(bool isOn);

    /// Stores the draft, its texts trimmed: a new mode at the end of the list, an edited one in its place.
    void confirm(const ModeDraft &draft);

    /// Removes a custom mode; when it was the selected one the default is selected.
    void remove(const QString &id);

private:
    Preferences &m_preferences;
};

} // namespace velmo
