#pragma once

#include "app/command_line/command.h"

namespace velmo {

/// `velmo dictate FILE...`: each recording goes through the dictation as if it had just been spoken.
[[nodiscard]] Command dictateCommand();

} // namespace velmo
