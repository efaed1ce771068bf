#pragma once

#include "app/command_line/command.h"

namespace velmo {

/// `velmo defaults list | read KEY | write KEY KIND VALUE | delete KEY`: the preference domain.
[[nodiscard]] Command defaultsCommand();

} // namespace velmo
