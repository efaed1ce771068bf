#pragma once

#include "localservice/chat/chat_client.h"
#include "localservice/http/endpoint.h"

namespace velmo::localservice {

/// POST /api/normalize-bokmal: {"text"} becomes {"text"}, its Norwegian written as Bokmål by the model.
/// Without a model (null) it is refused with 503, and Velmo keeps the text as it is. The client must outlive
/// the endpoint.
[[nodiscard]] Endpoint normalizeEndpoint(const ChatClient *chat);

} // namespace velmo::localservice
