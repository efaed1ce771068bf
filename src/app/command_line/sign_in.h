#pragma once

#include "app/command_line/command.h"

namespace velmo {

[[nodiscard]] Command signInCommand();

} // namespace velmo
