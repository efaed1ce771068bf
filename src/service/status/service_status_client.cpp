#include "service/status/service_status_client.h"

#include "base/json.h"
#include "service/http/http_client.h"
#include "service/status/status_json.h"
#include "service/wire/service_reply.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// On this machine an answer takes milliseconds; a person who looks at a page waits no longer for one that does not come.
constexpr HttpLimits kLimits{std::chrono::seconds(5), std::nullopt};

constexpr int kOk = 200;

/// The words of the service itself, where it has some: a person needs no status beside them.
StatusFailure failureOf(const HttpOutcome &outcome) {
    if (!outcome)
        return {outcome.error().kind != TransportFailure::Kind::InvalidReply, outcome.error().description};
    if (const auto said = errorMemberOf(*outcome))
        return {false, *said};
    if (outcome->status != kOk)
        return {false, u"The service answers with an error (%1)."_s.arg(outcome->status)};
    return {false, u"The service answers with something else."_s};
}

HttpRequest withBody(HttpRequest request, const QJsonObject &body) {
    request.headers.emplace_back("Content-Type", "application/json");
    request.body = json::compact(body);
    return request;
}

} // namespace

ServiceStatusClient::ServiceStatusClient(ServiceOrigin origin, HttpClient &http)
    : m_origin(std::move(origin)), m_http(http) {}

HttpRequest ServiceStatusClient::request(const char *method, const char *path) const {
    return {method, m_origin.baseURL() + QLatin1StringView(path), {}, std::nullopt, kLimits};
}

template <class Value>
void ServiceStatusClient::send(HttpRequest request, Value (*read)(const QJsonObject &),
                               Completion<Value> completion) {
    m_http.send(std::move(request), [read, completion = std::move(completion)](const HttpOutcome &outcome) {
        const auto object = objectOf(outcome);
        if (object)
            completion(read(*object));
        else
            completion(failed(failureOf(outcome)));
    });
}

void ServiceStatusClient::reach(Completion<void> completion) {
    m_http.send(request("HEAD", "/"), [completion = std::move(completion)](const HttpOutcome &outcome) {
        if (outcome)
            completion({});
        else
            completion(failed(failureOf(outcome)));
    });
}

void ServiceStatusClient::health(Completion<ServiceHealth> completion) {
    send(request("GET", "/health"), healthFrom, std::move(completion));
}

void ServiceStatusClient::models(Completion<SpeechModels> completion) {
    send(request("GET", "/api/models"), speechModelsFrom, std::move(completion));
}

void ServiceStatusClient::change(ModelWish wish, const QString &model, Completion<SpeechModels> completion) {
    send(withBody(request("POST", "/api/models"), wishFor(wish, model)), speechModelsFrom,
         std::move(completion));
}

void ServiceStatusClient::languageModels(Completion<LanguageModels> completion) {
    send(request("GET", "/api/language-model"), languageModelsFrom, std::move(completion));
}

void ServiceStatusClient::use(const LanguageModel &model, Completion<LanguageModels> completion) {
    send(withBody(request("PUT", "/api/language-model"), objectOf(model)), languageModelsFrom,
         std::move(completion));
}

} // namespace velmo
