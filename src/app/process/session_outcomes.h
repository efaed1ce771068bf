#pragma once

#include "platform/application_bus.h"

namespace velmo {

class AuthManager;

/// How an attempt to sign in that has just ended is told on the command line.
[[nodiscard]] CommandOutcome signInOutcome(const AuthManager &auth, bool signedIn);

/// The same for a sign-out: it fails where the keychain would not give the session's token up.
[[nodiscard]] CommandOutcome signOutOutcome(const AuthManager &auth);

} // namespace velmo
