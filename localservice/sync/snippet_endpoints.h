#pragma once

#include "localservice/account/account_database.h"

namespace velmo::localservice {

/// GET /api/sync/snippets: {"snippets"}, an array of {"id", "trigger", "expansion"} in ascending order of triggers. The
/// database must outlive the endpoint.
[[nodiscard]] Endpoint snippetPullEndpoint(AccountDatabase &database);

/// PUT /api/sync/snippets: {"snippets"}, all a device has. Triggers that differ in upper and lower case alone are one;
/// the pushed snippet replaces the stored one. Snippets that the device knew (from its last pull or push, whichever was
/// later) and has no more are removed without a trace, so a device that still has one brings it back; those that other
/// devices have added since stay.
[[nodiscard]] Endpoint snippetPushEndpoint(AccountDatabase &database);

} // namespace velmo::localservice
