#pragma once

#include <QString>
#include <QStringView>

/// Case by Unicode's full mappings and the root locale, whole string at once: "ß" → "SS", "İ" → "i̇", a final
/// "Σ" → "ς". Mapping letter by letter would give other results. All functions are safe on any thread; lone
/// surrogates stay as they are.
namespace velmo {

[[nodiscard]] QString lowerCased(QStringView text);
[[nodiscard]] QString upperCased(QStringView text);

/// Unicode's full case folding: two texts are equal whatever their case when their folded forms are.
[[nodiscard]] QString caseFolded(QStringView text);

/// Whether a character has case and is in its lower form: "å" and "ß" are, "Å", "ǅ" (title case) and "1" are
/// not.
[[nodiscard]] bool isLowerCase(QStringView character);
/// Likewise for the upper form; "ǅ" is in neither.
[[nodiscard]] bool isUpperCase(QStringView character);

/// With a first character in lower case replaced by its full upper-case form, which may be longer: "ßen" →
/// "SSen".
[[nodiscard]] QString withFirstCapital(const QString &text);

} // namespace velmo
