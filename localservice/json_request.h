#pragma once

#include "base/result.h"
#include "endpoint.h"

namespace velmo::localservice {

/// The JSON object that is the body of a request; otherwise 400.
[[nodiscard]] Result<QJsonObject, Refusal> jsonObjectOf(const Request &request);

/// The string of that name, which must be there and not empty; otherwise 400 and the member at fault.
[[nodiscard]] Result<QString, Refusal> textMember(const QJsonObject &object, QLatin1StringView name);

/// {"text": …}, or the refusal.
[[nodiscard]] Reply textReply(const Result<QString, Refusal> &text);

} // namespace velmo::localservice
