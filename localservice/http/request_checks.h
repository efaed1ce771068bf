#pragma once

#include "localservice/http/endpoint.h"

#include <httplib.h>
#include <optional>

namespace velmo::localservice {

/// Refuses what does not come from this machine, by the headers Host and Origin.
[[nodiscard]] std::optional<Refusal> refusalForSender(const httplib::Request &request);

/// Refuses, by its headers, a body that is too large, compressed or of no known length.
[[nodiscard]] std::optional<Refusal> refusalForBody(const httplib::Request &request, qint64 limit);

/// A sentence for what is refused with a status alone.
[[nodiscard]] QString sentenceForStatus(int status);

} // namespace velmo::localservice
