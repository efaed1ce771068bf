#pragma once

#include "app/command.h"

namespace velmo {

[[nodiscard]] Command signOutCommand();

} // namespace velmo
