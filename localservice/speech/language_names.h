#pragma once

#include <QString>
#include <optional>

namespace velmo::localservice {

/// The code Velmo knows a language by, from what speech servers call it: a name in English ("norwegian",
/// "Norwegian Nynorsk") or a code ("en", "nb-NO"). Norwegian is "no", Nynorsk "nn". Nothing for a name nobody
/// knows.
[[nodiscard]] std::optional<QString> languageCode(const QString &name);

} // namespace velmo::localservice
