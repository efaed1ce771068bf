#pragma once

#include "text/passes/cleanup_context.h"

namespace velmo {

/// Takes out hesitations and filler words that stand between white space, with a comma or full stop right
/// behind them: "um, ja" loses "um,"; "umbrella" and "(um)" stay.
[[nodiscard]] QString removeFillers(const QString &text, const CleanupContext &context);

} // namespace velmo
