#pragma once

#include "app/command_line/command.h"

namespace velmo {

/// `velmo clean`: the local text path alone, from standard input to standard output. No network: modes and the
/// Bokmål service are never asked.
[[nodiscard]] Command cleanCommand();

} // namespace velmo
