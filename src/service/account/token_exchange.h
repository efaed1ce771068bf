#pragma once

#include "service/account/sign_in_callback.h"
#include "service/account/velmo_user.h"
#include "service/http/http_client.h"

namespace velmo {

/// The body of the request that exchanges an identity token for a session.
[[nodiscard]] QByteArray exchangeBody(const SignInCallback &callback);

/// A session the service has begun.
struct NewSession {
    QString token;
    VelmoUser user;
};

/// Why there is no session.
struct ExchangeFailure {
    QString logLine;
    QString message; ///< For the person.
};

[[nodiscard]] Result<NewSession, ExchangeFailure> exchangeResult(const HttpOutcome &outcome);

} // namespace velmo
