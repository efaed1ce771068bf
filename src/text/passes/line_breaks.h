#pragma once

#include <QString>

/// Line breaks that were spoken ("new line") survive; those of the transcript are white space like any other.
/// To tell them apart, the transcript's become line feeds before spoken ones are written as U+2028 (line) and
/// U+2029 (paragraph), and only when all passes are done those become line feeds.
namespace velmo {

inline constexpr QChar kLineBreak = u'\u2028';
inline constexpr QChar kParagraphBreak = u'\u2029';

[[nodiscard]] constexpr bool isSpokenBreak(QChar character) {
    return character == kLineBreak || character == kParagraphBreak;
}

/// The expression with its white space (`\s`) kept from spoken breaks, so that a pass which squeezes or
/// crosses white space leaves them alone.
[[nodiscard]] QString withinLine(QStringView expression);

} // namespace velmo
