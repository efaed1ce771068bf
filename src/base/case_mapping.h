#pragma once

#include <QString>
#include <QStringView>

/// Case by Unicode's full mappings and the root locale, whole string at once: "ß" → "SS", "İ" → "i̇", a final
/// "Σ" → "ς". Mapping letter by letter would give other results. All functions are safe on any thread; lone
/// surrogates stay as they are.
namespace velmo {

[[nodiscard]] QString lowerCased(QStringView text);
[[nodiscard]] QString upperCased(QStringView text);

} // namespace velmo
