#pragma once

#include "text/passes/cleanup_context.h"

namespace velmo {

/// A word of up to three letters said twice in a row is written once: "the the cat" → "the cat". Speech
/// models write stutters that way; longer words are repeated on purpose more often.
[[nodiscard]] QString collapseRepeatedShortWords(const QString &text, const CleanupContext &context);

} // namespace velmo
