#pragma once

#include "app/command_line/command.h"

namespace velmo {

[[nodiscard]] Command historyCommand();

} // namespace velmo
