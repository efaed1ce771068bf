#include "app/process/session_outcomes.h"

#include "app/process/exit_status.h"
#include "service/account/auth_manager.h"

using namespace Qt::StringLiterals;

namespace velmo {

CommandOutcome signInOutcome(const AuthManager &auth, bool signedIn) {
    if (signedIn && auth.currentUser()) {
        const VelmoUser &user = *auth.currentUser();
        const QString failure = auth.keychainFailure();
        return {exit_status::success, u"Signed in as %1\n"_s.arg(user.email.value_or(user.id)),
                failure.isNull() ? QString() : u"You will have to sign in again: "_s + failure};
    }
    const QString &error = auth.authError();
    return {exit_status::failure, {}, error.isNull() ? u"The sign-in was given up."_s : error};
}

CommandOutcome signOutOutcome(const AuthManager &auth) {
    const QString failure = auth.keychainFailure();
    if (failure.isNull())
        return {};
    return {exit_status::failure, {}, u"The keyring may still hold your session: "_s + failure};
}

} // namespace velmo
