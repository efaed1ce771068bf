#include "localservice/chat/process_endpoint.h"

#include "localservice/chat/rewrite_endpoint.h"
#include "localservice/http/json_request.h"

namespace velmo::localservice {

namespace {

// Velmo waits 15 s for the whole exchange.
constexpr std::chrono::milliseconds kLimit{14500};

} // namespace

Endpoint processEndpoint(const ChatClient *chat) {
    return rewriteEndpoint(chat, {"/api/process", kLimit, [](const QJsonObject &body) {
                                      return textMember(body, QLatin1StringView("systemPrompt"));
                                  }});
}

} // namespace velmo::localservice
