#pragma once

#include "localservice/account/accounts.h"

namespace velmo::localservice {

/// POST /api/auth/apple: {"identityToken", "fullName"?: {"givenName"?, "familyName"?}} becomes {"token", "user"}: a
/// session of the account that the token stands for. 401 when the token is unknown, used already or too old. The
/// accounts must outlive the endpoint.
[[nodiscard]] Endpoint tokenExchangeEndpoint(Accounts &accounts);

/// POST /api/auth/me: {"user"}, who is signed in. The database must outlive the endpoint.
[[nodiscard]] Endpoint accountEndpoint(AccountDatabase &database);

} // namespace velmo::localservice
