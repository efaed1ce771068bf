#pragma once

#include "app/command.h"

namespace velmo {

[[nodiscard]] Command signInCommand();

} // namespace velmo
