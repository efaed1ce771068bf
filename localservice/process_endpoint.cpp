#include "localservice/process_endpoint.h"

#include "localservice/json_request.h"
#include "localservice/rewrite_endpoint.h"

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
