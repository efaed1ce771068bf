#pragma once

#include "localservice/chat/chat_client.h"
#include "localservice/http/endpoint.h"

namespace velmo::localservice {

/// POST /api/process: {"text", "systemPrompt"} becomes {"text"}, rewritten by the model under the prompt.
/// Without a model (null) it is refused with 503, and Velmo keeps its local result. The client must outlive
/// the endpoint.
[[nodiscard]] Endpoint processEndpoint(const ChatClient *chat);

/// POST /api/normalize-bokmal: {"text"} becomes {"text"}, its Norwegian written as Bokmål by the model.
/// Without a model (null) it is refused with 503, and Velmo keeps the text as it is. The client must outlive
/// the endpoint.
[[nodiscard]] Endpoint normalizeEndpoint(const ChatClient *chat);

} // namespace velmo::localservice
