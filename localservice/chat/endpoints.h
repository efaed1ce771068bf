#pragma once

#include "localservice/chat/chat_client.h"
#include "localservice/http/endpoint.h"

#include <functional>
#include <memory>
#include <vector>

namespace velmo::localservice {

class LanguageModelChoice;

/// Answers the language model at that moment; null when there is none.
using LanguageModelSource = std::function<std::shared_ptr<const ChatClient>()>;

/// POST /api/process: {"text", "systemPrompt"} becomes {"text"}, rewritten by the model under the prompt.
/// Without a model it is refused with 503, and Velmo keeps its local result.
[[nodiscard]] Endpoint processEndpoint(LanguageModelSource model);

/// POST /api/normalize-bokmal: {"text"} becomes {"text"}, its Norwegian written as Bokmål by the model.
/// Without a model it is refused with 503, and Velmo keeps the text as it is.
[[nodiscard]] Endpoint normalizeEndpoint(LanguageModelSource model);

/// GET /api/language-model: {"address", "model", "found"}, which one is in use (neither member: none), and what is found on
/// this machine: [{"name", "address", "models"}]. PUT chooses: {"address", "model"}, or {} for none, and answers the same. Both
/// outlive the endpoints.
[[nodiscard]] std::vector<Endpoint> languageModelEndpoints(HttpClient &http, LanguageModelChoice &choice);

} // namespace velmo::localservice
