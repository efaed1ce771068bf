#pragma once

#include "text/passes/cleanup_context.h"

namespace velmo {

/// Writes the emoji for "emoji" and a name on the same line: "bra emoji tommel opp" → "bra 👍".
[[nodiscard]] QString writeSpokenEmoji(const QString &text, const CleanupContext &context);

} // namespace velmo
