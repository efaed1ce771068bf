#pragma once

#include "localservice/account/accounts.h"

namespace velmo::localservice {

/// POST /api/auth/apple: {"identityToken", "fullName"?: {"givenName"?, "familyName"?}} becomes {"token", "user"}: a
/// session of the account that the token stands for. 401 when the token is unknown, used already or too old. The
/// accounts must outlive the endpoint.
[[nodiscard]] Endpoint tokenExchangeEndpoint(Accounts &accounts);

/// POST /api/auth/me: {"user"}, who is signed in. The database must outlive the endpoint.
[[nodiscard]] Endpoint accountEndpoint(AccountDatabase &database);

// The sign-in page: it plays the identity provider for this machine, over loopback alone. Whoever can open it can sign in
// as anybody, as a person who sits at this machine can anyway. The accounts must outlive the endpoints.

/// GET /auth/authorize: the form, for a request as Velmo makes it; otherwise a page that names what is off.
[[nodiscard]] Endpoint signInPageEndpoint();

/// POST /auth/authorize: takes the form, and answers a page that hands an identity token on, or the form again.
[[nodiscard]] Endpoint signInEndpoint(Accounts &accounts);

/// POST /api/auth/apple/callback: "id_token", "state" and, where something new is known of the person, "user" lead on to
/// Velmo, as 303 to "velmo://auth?id_token=…&state=…&user=…".
[[nodiscard]] Endpoint signInCallbackEndpoint();

} // namespace velmo::localservice
