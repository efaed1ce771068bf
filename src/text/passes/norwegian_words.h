#pragma once

#include <QString>

namespace velmo {

/// Whether a text has a Nordic letter or one of the commonest Norwegian words. Meant for text that was
/// detected as Norwegian or Swedish; "Eg veit ikkje" does not look Norwegian.
[[nodiscard]] bool looksNorwegian(const QString &text);

/// Writes Nynorsk words in Bokmål, and "nå" where a speech model heard the English "no" at the start of a
/// line or after a mark: "no, det er bra" → "nå, det er bra". Only for people whose primary language is
/// Bokmål.
[[nodiscard]] QString fixNorwegianWords(const QString &text, const QString &primaryLanguage);

/// Whether the primary language is Bokmål.
[[nodiscard]] bool isBokmal(const QString &primaryLanguage);

} // namespace velmo
