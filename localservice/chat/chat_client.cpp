#include "localservice/chat/chat_client.h"

#include "base/json.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

QJsonObject message(const QString &role, const QString &content) {
    return {{u"role"_s, role}, {u"content"_s, content}};
}

/// Models that reason aloud do so first, between <think> and </think>.
QString withoutReasoning(const QString &answer) {
    const QString trimmed = answer.trimmed();
    const QString closing = u"</think>"_s;
    const qsizetype end = trimmed.indexOf(closing);
    if (!trimmed.startsWith(u"<think>") || end < 0)
        return trimmed;
    return trimmed.sliced(end + closing.size()).trimmed();
}

} // namespace

ChatClient::ChatClient(HttpClient &http, OpenAiAddress address)
    : m_server(http, u"chat server"_s, std::move(address)) {}

Result<QString, Refusal> ChatClient::rewrite(const QString &instruction, const QString &text,
                                             std::chrono::milliseconds limit) const {
    QJsonObject request{
        {u"messages"_s, QJsonArray{message(u"system"_s, instruction), message(u"user"_s, text)}},
        {u"stream"_s, false},
        {u"temperature"_s, 0}}; // the same words are to become the same text
    if (!m_server.model().isEmpty())
        request.insert(u"model"_s, m_server.model());

    const auto reply = m_server.post("application/json", json::compact(request), limit);
    if (!reply)
        return failed(reply.error());
    const QJsonValue content =
        reply->value(u"choices").toArray().at(0).toObject().value(u"message").toObject().value(u"content");
    const QString answer = withoutReasoning(content.toString());
    if (answer.isEmpty())
        return failed(m_server.badAnswer());
    return answer;
}

Refusal noChatServer() {
    return {
        503,
        u"No language model is set up. Choose one in the settings, or start velmo-local-service with --chat-url."_s};
}

} // namespace velmo::localservice
