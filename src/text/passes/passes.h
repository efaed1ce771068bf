#pragma once

#include "text/passes/cleanup_context.h"

/// The cleaning passes: pure functions of the text and of what is known besides it, safe on any thread.
/// `local_pipeline.cpp` says in which order they run.
namespace velmo {

// What speech models get wrong in whole phrases, mended before anything else is looked at.

/// "I'd to go" → "I'd like to go", "I want go" → "I want to go".
[[nodiscard]] QString mendWishes(const QString &text, const CleanupContext &context);

/// A trimmed transcript that is nothing but a stock phrase nobody said becomes empty.
[[nodiscard]] QString dropStockPhrase(const QString &text, const CleanupContext &context);

// Line breaks; `line_breaks.h` says how spoken ones are told from the transcript's.

/// U+2028 and U+2029 of the transcript become line feeds.
[[nodiscard]] QString foldTranscriptBreaks(const QString &text, const CleanupContext &context);

/// Trims the text and writes its spoken breaks: one line feed for a line, two for a paragraph, never more
/// than two in a row.
[[nodiscard]] QString writeSpokenBreaks(const QString &text, const CleanupContext &context);

// Words.

/// Takes out hesitations and filler words that stand between white space, with a comma or full stop right
/// behind them: "um, ja" loses "um,"; "umbrella" and "(um)" stay.
[[nodiscard]] QString removeFillers(const QString &text, const CleanupContext &context);

/// A word of up to three letters said twice in a row is written once: "the the cat" → "the cat". Speech
/// models write stutters that way; longer words are repeated on purpose more often.
[[nodiscard]] QString collapseRepeatedShortWords(const QString &text, const CleanupContext &context);

/// Writes Norwegian words as `fixNorwegianWords` does, where Norwegian may have been spoken and the text
/// looks it.
[[nodiscard]] QString fixNorwegian(const QString &text, const CleanupContext &context);

// What was spoken as words and is written as a mark.

/// Writes the marks and breaks that were spoken as words: "hei komma verden" → "hei , verden". A comma or
/// full stop right behind a spoken break goes with it, since speech models put one there.
[[nodiscard]] QString writeSpokenPunctuation(const QString &text, const CleanupContext &context);

/// Writes the emoji for "emoji" and a name on the same line: "bra emoji tommel opp" → "bra 👍".
[[nodiscard]] QString writeSpokenEmoji(const QString &text, const CleanupContext &context);

// Spacing.

/// Every run of white space becomes one space; beside a spoken break it goes altogether.
[[nodiscard]] QString squeezeWhiteSpace(const QString &text, const CleanupContext &context);

/// No white space before a mark: "hei ," → "hei,". A mark that begins a line stays there.
[[nodiscard]] QString pullMarksToWords(const QString &text, const CleanupContext &context);

/// A space behind a mark that is followed by neither white space nor the end: "hei,du" → "hei, du". Numbers
/// are no exception: "10:30" → "10: 30".
[[nodiscard]] QString spaceOutMarks(const QString &text, const CleanupContext &context);

/// One mark at the very beginning goes: ", hei" → "hei".
[[nodiscard]] QString dropLeadingMark(const QString &text, const CleanupContext &context);

// Capitals.

/// Trims the text and begins it with a capital.
[[nodiscard]] QString capitaliseStart(const QString &text, const CleanupContext &context);

/// A capital begins the text, each sentence (behind ".", "!" or "?" and any spaces) and each spoken line.
[[nodiscard]] QString capitaliseSentences(const QString &text, const CleanupContext &context);

/// The English word "i" is written "I", where English rules apply.
[[nodiscard]] QString capitaliseEnglishI(const QString &text, const CleanupContext &context);

} // namespace velmo
