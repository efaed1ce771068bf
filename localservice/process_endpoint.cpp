#include "process_endpoint.h"

#include "json_request.h"

namespace velmo::localservice {

namespace {

// Velmo waits 15 s for the whole exchange.
constexpr std::chrono::milliseconds kLimit{14500};

Result<QString, Refusal> process(const ChatClient *chat, const Request &request) {
    if (!chat)
        return failed(noChatServer());
    const auto body = jsonObjectOf(request);
    if (!body)
        return failed(body.error());
    const auto text = textMember(*body, QLatin1StringView("text"));
    if (!text)
        return failed(text.error());
    const auto prompt = textMember(*body, QLatin1StringView("systemPrompt"));
    if (!prompt)
        return failed(prompt.error());
    return chat->rewrite(*prompt, *text, kLimit);
}

} // namespace

Endpoint processEndpoint(const ChatClient *chat) {
    return {"POST", "/api/process",
            [chat](const Request &request) { return textReply(process(chat, request)); }};
}

} // namespace velmo::localservice
