#pragma once

#include "platform/application_bus.h"

namespace velmo {

class AuthManager;

/// How an attempt to sign in that has just ended is told on the command line.
[[nodiscard]] CommandOutcome signInOutcome(const AuthManager &auth, bool signedIn);

} // namespace velmo
