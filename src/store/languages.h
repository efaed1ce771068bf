#pragma once

#include "store/preferences.h"

#include <QStringList>

namespace velmo {

/// The stored primary language, else "no".
[[nodiscard]] QString primaryLanguage(const Preferences &preferences);

/// The comma-separated codes exactly as stored, else "no,sv,da,fi,en".
[[nodiscard]] QString selectedLanguagesText(const Preferences &preferences);

/// The codes of such a text, in its order, each trimmed of spaces and tabs; empty pieces stay.
[[nodiscard]] QStringList languageCodes(const QString &selectedLanguages);

} // namespace velmo
