#include "localservice/http/openai_server.h"

#include "base/characters.h"
#include "base/json.h"
#include "service/http/http_client.h"

#include <QUrl>
#include <future>
#include <memory>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr int kBadGateway = 502;
constexpr int kGatewayTimeout = 504;
// Enough to tell what is wrong; some servers answer with a page.
constexpr qsizetype kLongestMessage = 200;

/// What a refusing server says: {"error": {"message": …}} as OpenAI has it, or {"error": …}, {"detail": …}.
QString messageOf(const QByteArray &body) {
    const QJsonObject reply = json::object(body).value_or(QJsonObject());
    const QJsonValue error = reply.value(u"error");
    QString message = error.isObject() ? error.toObject().value(u"message").toString() : error.toString();
    if (message.isEmpty())
        message = reply.value(u"detail").toString();
    return firstCharacters(message, kLongestMessage).toString();
}

HttpOutcome sendAndWait(HttpClient &http, HttpRequest request) {
    // Shared, since the waiter may be gone before the completion has quite returned.
    const auto promise = std::make_shared<std::promise<HttpOutcome>>();
    auto outcome = promise->get_future();
    http.send(std::move(request), [promise](HttpOutcome reply) { promise->set_value(std::move(reply)); });
    return outcome.get();
}

} // namespace

Result<QString, QString> openAiUrl(const QString &written, const QString &endpointPath) {
    QUrl url(written, QUrl::StrictMode);
    const bool isWeb = url.scheme() == u"http" || url.scheme() == u"https";
    if (!url.isValid() || !isWeb || url.host().isEmpty() || !url.userInfo().isEmpty())
        return failed(u"'%1' is no address such as http://127.0.0.1:8080."_s.arg(url.toDisplayString()));
    const QString version = u"/v1"_s;
    if (url.path().isEmpty() || url.path() == u"/")
        url.setPath(endpointPath);
    else if (url.path() == version || url.path() == version + u'/')
        url.setPath(version + endpointPath.sliced(version.size()));
    return url.toString();
}

OpenAiServer::OpenAiServer(HttpClient &http, QString name, OpenAiAddress address)
    : m_http(http), m_name(std::move(name)), m_address(std::move(address)) {}

Result<QJsonObject, Refusal> OpenAiServer::post(const QByteArray &contentType, QByteArray body,
                                                std::chrono::milliseconds limit) const {
    HttpRequest request{"POST", m_address.url, {{"Content-Type", contentType}}, std::move(body), {limit, {}}};
    // A server may close a kept connection just when it is used again, and nothing is sent twice.
    request.headers.emplace_back("Connection", "close");
    if (!m_address.apiKey.isEmpty())
        request.headers.emplace_back("Authorization", "Bearer " + m_address.apiKey);

    const HttpOutcome outcome = sendAndWait(m_http, std::move(request));
    if (!outcome && outcome.error().kind == TransportFailure::Kind::TimedOut)
        return failed(Refusal{kGatewayTimeout, u"The %1 did not answer in time."_s.arg(m_name)});
    if (!outcome)
        return failed(
            Refusal{kBadGateway, u"The %1 gave no answer: %2"_s.arg(m_name, outcome.error().description)});
    if (outcome->status != 200)
        return failed(
            Refusal{kBadGateway, u"The %1 refused with status %2: %3"_s.arg(
                                     m_name, QString::number(outcome->status), messageOf(outcome->body))});
    if (auto reply = json::object(outcome->body))
        return *reply;
    return failed(badAnswer());
}

Refusal OpenAiServer::badAnswer() const {
    return {kBadGateway, u"The %1 answered with something else than was asked for."_s.arg(m_name)};
}

} // namespace velmo::localservice
