#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <vector>

/// Characters as people see them: grapheme clusters, by ICU. Wherever Velmo counts, cuts or compares
/// "characters" it means these, never UTF-16 units: "é" written as two code points is one character, and so
/// is "👨‍👩‍👧". All functions are safe on any thread.
namespace velmo {

/// The characters of the text in order; each refers to the text. Prefer it to counting or cutting repeatedly:
/// it walks the text once, which a hundred thousand marks on one letter would otherwise make quadratic.
[[nodiscard]] std::vector<QStringView> characters(QStringView text);

[[nodiscard]] qsizetype characterCount(QStringView text);

/// The first `count` characters, or the whole text when it has fewer. Costs no more than the part it returns.
[[nodiscard]] QStringView firstCharacters(QStringView text, qsizetype count);

/// Unicode's White_Space: the separators (Z*), tab, U+000A to U+000D and U+0085.
[[nodiscard]] bool isWhiteSpace(char32_t codePoint);

/// Unicode's Alphabetic: letters, and marks and numbers that are written like letters ("Ⅻ").
[[nodiscard]] bool isAlphabetic(char32_t codePoint);

/// Whether a character begins with a letter or a number (general categories L* and N*). What joins on to it, an accent
/// or the key around a digit, does not change what it is.
[[nodiscard]] bool isLetterOrNumber(QStringView character);

/// Without white space at both ends.
[[nodiscard]] QStringView trimmed(QStringView text);

/// Without horizontal white space at both ends: the Unicode space separators (Zs) and tab; line breaks stay.
[[nodiscard]] QStringView trimmedOfBlanks(QStringView text);

/// Ascending order by code points (never by UTF-16 units).
[[nodiscard]] bool precedesByCodePoints(QStringView left, QStringView right);

/// The words in the order of their composed forms; canonically equal ones by their own code points.
[[nodiscard]] QStringList inOrder(const QStringList &words);

} // namespace velmo
