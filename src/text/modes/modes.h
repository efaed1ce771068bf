#pragma once

#include "store/preferences.h"

#include <QList>

namespace velmo {

/// What happens to a text behind the local path: kept as it is, or rewritten by a language model.
struct Mode {
    QString id;
    QString name;
    QString icon; ///< The name of a symbol.
    QString description;
    QString systemPrompt; ///< Empty: the text is kept.
    bool isBuiltIn;
};

/// Keeps the text; the mode of those who never chose one.
inline constexpr QLatin1StringView kDefaultModeId{"accurate"};

/// The built-in modes, then the person's own.
[[nodiscard]] QList<Mode> allModes(const Preferences &preferences);

[[nodiscard]] QString selectedModeId(const Preferences &preferences);

/// The prompt of the selected mode; empty when it has none or there is no such mode. A custom mode goes before a
/// built-in one of the same identifier.
[[nodiscard]] QString selectedModePrompt(const Preferences &preferences);

/// Whether texts are sent to the selected mode at all.
[[nodiscard]] bool smartFormatting(const Preferences &preferences);

} // namespace velmo
