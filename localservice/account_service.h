#pragma once

#include "localservice/account/accounts.h"

namespace velmo::localservice {

/// Signing in and synchronisation: every endpoint that works on accounts. Both must outlive the endpoints.
[[nodiscard]] std::vector<Endpoint> accountServiceEndpoints(AccountDatabase &database, Accounts &accounts);

} // namespace velmo::localservice
