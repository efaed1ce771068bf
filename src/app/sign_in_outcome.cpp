#include "app/sign_in_outcome.h"

#include "app/command.h"
#include "service/auth_manager.h"

namespace velmo {

CommandOutcome signInOutcome(const AuthManager &auth, bool signedIn) {
    if (signedIn && auth.currentUser()) {
        const VelmoUser &user = *auth.currentUser();
        return {
            exit_status::success, QStringLiteral("Signed in as %1\n").arg(user.email.value_or(user.id)), {}};
    }
    const QString &error = auth.authError();
    return {exit_status::failure, {}, error.isNull() ? QStringLiteral("The sign-in was given up.") : error};
}

} // namespace velmo
