#pragma once

#include "localservice/account/accounts.h"

namespace velmo::localservice {

/// What a signed-in device asks for, within one transaction; answers the reply's JSON object.
using SessionWork = std::function<Result<QJsonObject, Refusal>(SqlRun &, const Session &, const Request &)>;

/// An endpoint for signed-in devices: without the token of a session ("Authorization: Bearer …") the answer is 401.
/// The database must outlive it.
[[nodiscard]] Endpoint sessionEndpoint(QByteArray method, QByteArray path, AccountDatabase &database,
                                       SessionWork work);

} // namespace velmo::localservice
