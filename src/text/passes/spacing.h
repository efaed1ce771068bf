#pragma once

#include "text/passes/cleanup_context.h"

namespace velmo {

/// Every run of white space becomes one space; beside a spoken break it goes altogether.
[[nodiscard]] QString squeezeWhiteSpace(const QString &text, const CleanupContext &context);

/// No white space before a mark: "hei ," → "hei,". A mark that begins a line stays there.
[[nodiscard]] QString pullMarksToWords(const QString &text, const CleanupContext &context);

/// A space behind a mark that is followed by neither white space nor the end: "hei,du" → "hei, du". Numbers
/// are no exception: "10:30" → "10: 30".
[[nodiscard]] QString spaceOutMarks(const QString &text, const CleanupContext &context);

/// One mark at the very beginning goes: ", hei" → "hei".
[[nodiscard]] QString dropLeadingMark(const QString &text, const CleanupContext &context);

} // namespace velmo
