#pragma once

#include "text/passes/cleanup_context.h"

namespace velmo {

/// Writes the marks and breaks that were spoken as words: "hei komma verden" → "hei , verden". A comma or
/// full stop right behind a spoken break goes with it, since speech models put one there.
[[nodiscard]] QString writeSpokenPunctuation(const QString &text, const CleanupContext &context);

} // namespace velmo
