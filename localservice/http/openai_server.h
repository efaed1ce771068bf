#pragma once

#include "base/result.h"
#include "localservice/http/endpoint.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <chrono>

namespace velmo {
class HttpClient;
}

namespace velmo::localservice {

/// Where a server with an OpenAI-compatible interface is, and how to ask it.
struct OpenAiAddress {
    QString url; ///< Of the endpoint itself.
    QString model;
    QByteArray apiKey; ///< Sent as a bearer token; empty: none.
};

/// The address of an endpoint ("/v1/chat/completions") from what a person writes: the server alone
/// ("http://127.0.0.1:8080"), with the version ("https://api.example/v1") or the whole address, which stays
/// as it is. A sentence when it is no http or https address.
[[nodiscard]] Result<QString, QString> openAiUrl(const QString &written, const QString &endpointPath);

/// A server that is asked on behalf of Velmo. Any thread.
class OpenAiServer {
public:
    /// `name` is what sentences call it: "speech server". The client must outlive it.
    OpenAiServer(HttpClient &http, QString name, OpenAiAddress address);

    [[nodiscard]] const QString &model() const { return m_address.model; }

    /// Posts and waits for the JSON object of the answer. No answer in time is refused with 504, everything
    /// else that is no success with 502.
    [[nodiscard]] Result<QJsonObject, Refusal> post(const QByteArray &contentType, QByteArray body,
                                                    std::chrono::milliseconds limit) const;

    /// For an answer without what was asked for.
    [[nodiscard]] Refusal badAnswer() const;

private:
    HttpClient &m_http;
    QString m_name;
    OpenAiAddress m_address;
};

} // namespace velmo::localservice
