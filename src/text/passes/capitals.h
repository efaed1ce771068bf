#pragma once

#include "text/passes/cleanup_context.h"

namespace velmo {

/// Trims the text and begins it with a capital.
[[nodiscard]] QString capitaliseStart(const QString &text, const CleanupContext &context);

/// A capital begins the text, each sentence (behind ".", "!" or "?" and any spaces) and each spoken line.
[[nodiscard]] QString capitaliseSentences(const QString &text, const CleanupContext &context);

/// The English word "i" is written "I", where English rules apply.
[[nodiscard]] QString capitaliseEnglishI(const QString &text, const CleanupContext &context);

} // namespace velmo
