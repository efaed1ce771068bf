#pragma once

#include "app/command.h"

namespace velmo {

[[nodiscard]] Command historyCommand();

} // namespace velmo
