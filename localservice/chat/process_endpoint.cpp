#include "localservice/chat/endpoints.h"

#include "localservice/chat/rewrite_endpoint.h"
#include "localservice/http/json_request.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// Velmo waits 15 s for the whole exchange.
constexpr std::chrono::milliseconds kLimit{14500};

} // namespace

Endpoint processEndpoint(LanguageModelSource model) {
    return rewriteEndpoint(std::move(model), {"/api/process", kLimit, [](const QJsonObject &body) {
                                                  return textMember(body, "systemPrompt"_L1);
                                              }});
}

} // namespace velmo::localservice
