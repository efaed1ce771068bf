#pragma once

#include "store/preferences.h"

#include <QStringList>
#include <optional>

namespace velmo {

/// What the cleaning passes know besides the text.
struct CleanupContext {
    /// Whose spoken punctuation, fillers and capital "I" apply, in the order they were selected.
    QStringList languages;
    std::optional<QString> detectedLanguage; ///< Lower-cased; absent when the service reported none.
    QString primaryLanguage;

    /// Whether a language was detected and is in the set.
    [[nodiscard]] bool detected(bool (*isInSet)(QStringView code)) const;
};

/// Reads the context from the preferences as they are now.
[[nodiscard]] CleanupContext cleanupContext(const Preferences &preferences,
                                            const std::optional<QString> &detectedLanguage);

} // namespace velmo
