#include "app/command_line/session_outcomes.h"

#include "app/command_line/command.h"
#include "service/account/auth_manager.h"

namespace velmo {

CommandOutcome signInOutcome(const AuthManager &auth, bool signedIn) {
    if (signedIn && auth.currentUser()) {
        const VelmoUser &user = *auth.currentUser();
        const QString failure = auth.keychainFailure();
        return {exit_status::success, QStringLiteral("Signed in as %1\n").arg(user.email.value_or(user.id)),
                failure.isNull() ? QString() : QStringLiteral("You will have to sign in again: ") + failure};
    }
    const QString &error = auth.authError();
    return {exit_status::failure, {}, error.isNull() ? QStringLiteral("The sign-in was given up.") : error};
}

CommandOutcome signOutOutcome(const AuthManager &auth) {
    const QString failure = auth.keychainFailure();
    if (failure.isNull())
        return {};
    return {exit_status::failure, {}, QStringLiteral("The keyring may still hold your session: ") + failure};
}

} // namespace velmo
