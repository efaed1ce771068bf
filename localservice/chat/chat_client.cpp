#include "localservice/chat/chat_client.h"

#include "base/json.h"

namespace velmo::localservice {

namespace {

QJsonObject message(const QString &role, const QString &content) {
    return {{QStringLiteral("role"), role}, {QStringLiteral("content"), content}};
}

/// Models that reason aloud do so first, between <think> and </think>.
QString withoutReasoning(const QString &answer) {
    const QString trimmed = answer.trimmed();
    const QString closing = QStringLiteral("</think>");
    const qsizetype end = trimmed.indexOf(closing);
    if (!trimmed.startsWith(u"<think>") || end < 0)
        return trimmed;
    return trimmed.sliced(end + closing.size()).trimmed();
}

} // namespace

ChatClient::ChatClient(HttpClient &http, OpenAiAddress address)
    : m_server(http, QStringLiteral("chat server"), std::move(address)) {}

Result<QString, Refusal> ChatClient::rewrite(const QString &instruction, const QString &text,
                                             std::chrono::milliseconds limit) const {
    QJsonObject request{
        {QStringLiteral("messages"),
         QJsonArray{message(QStringLiteral("system"), instruction), message(QStringLiteral("user"), text)}},
        {QStringLiteral("stream"), false},
        {QStringLiteral("temperature"), 0}}; // the same words are to become the same text
    if (!m_server.model().isEmpty())
        request.insert(QStringLiteral("model"), m_server.model());

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
    return {503, QStringLiteral("No language model is set up. Start velmo-local-service with --chat-url.")};
}

} // namespace velmo::localservice
