#pragma once

#include "store/preferences.h"

#include <QStringList>
#include <optional>

namespace velmo {

/// The words the speech model should expect, joined with ", " in ascending order of code points: the words of the
/// dictionary (without those that are listed only for languages not among the given ones) and the learned words of the
/// given languages. Canonically equal words count once. Nothing, and no log line, for fewer than 3 words: so few
/// invite the model to echo them. Reads the preferences afresh; any thread.
[[nodiscard]] std::optional<QString> buildHintPrompt(const Preferences &preferences,
                                                     const QStringList &languages);

} // namespace velmo
