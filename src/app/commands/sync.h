#pragma once

#include "app/command.h"

namespace velmo {

[[nodiscard]] Command syncCommand();

} // namespace velmo
