#pragma once

#include "localservice/chat/endpoints.h"
#include "localservice/http/endpoint.h"

namespace velmo::localservice {

/// An endpoint that has the chat server rewrite the member "text" of the body.
struct Rewriting {
    const char *path;
    std::chrono::milliseconds limit; ///< For the whole exchange with the chat server.
    /// What the chat server is told to do, from the body.
    std::function<Result<QString, Refusal>(const QJsonObject &body)> instruction;
};

/// Without a chat server it answers 503.
[[nodiscard]] Endpoint rewriteEndpoint(LanguageModelSource model, const Rewriting &rewriting);

} // namespace velmo::localservice
