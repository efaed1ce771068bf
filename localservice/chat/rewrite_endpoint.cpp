#include "localservice/chat/rewrite_endpoint.h"

#include "localservice/http/json_request.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

Result<QString, Refusal> rewrite(const LanguageModelSource &model, const Rewriting &rewriting,
                                 const Request &request) {
    const auto chat = model();
    if (!chat)
        return failed(noChatServer());
    const auto body = jsonObjectOf(request);
    if (!body)
        return failed(body.error());
    const auto text = textMember(*body, "text"_L1);
    if (!text)
        return failed(text.error());
    const auto instruction = rewriting.instruction(*body);
    if (!instruction)
        return failed(instruction.error());
    return chat->rewrite(*instruction, *text, rewriting.limit);
}

} // namespace

Endpoint rewriteEndpoint(LanguageModelSource model, const Rewriting &rewriting) {
    return {"POST", rewriting.path, [model = std::move(model), rewriting](const Request &request) {
                return textReply(rewrite(model, rewriting, request));
            }};
}

} // namespace velmo::localservice
