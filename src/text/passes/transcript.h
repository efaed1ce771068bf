#pragma once

#include "text/passes/cleanup_context.h"

/// What speech models get wrong in whole phrases, mended before anything else is looked at.
namespace velmo {

/// "I'd to go" → "I'd like to go", "I want go" → "I want to go".
[[nodiscard]] QString mendWishes(const QString &text, const CleanupContext &context);

/// A trimmed transcript that is nothing but a stock phrase nobody said becomes empty.
[[nodiscard]] QString dropStockPhrase(const QString &text, const CleanupContext &context);

} // namespace velmo
