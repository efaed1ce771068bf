#include "base/json.h"
#include "localservice/chat/endpoints.h"
#include "localservice/chat/language_model_choice.h"
#include "localservice/http/json_request.h"
#include "service/http/http_client.h"

#include <future>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// Where Ollama listens unless it is told otherwise.
const QString kOllama = u"http://127.0.0.1:11434"_s;

/// On this machine it answers at once, or nobody is there.
constexpr HttpLimits kAsking{std::chrono::milliseconds(300), std::nullopt};

/// The language models that an Ollama on this machine has; nothing when there is none.
std::optional<QJsonArray> ollamaModels(HttpClient &http) {
    std::promise<HttpOutcome> answered;
    http.send({"GET", kOllama + "/api/tags"_L1, {}, std::nullopt, kAsking},
              [&answered](HttpOutcome outcome) { answered.set_value(std::move(outcome)); });
    const HttpOutcome outcome = answered.get_future().get();
    const auto reply = outcome && outcome->status == 200 ? json::object(outcome->body) : std::nullopt;
    if (!reply)
        return std::nullopt;
    QJsonArray names;
    const QJsonArray models = reply->value("models"_L1).toArray();
    for (const auto &model : models)
        names.append(model.toObject()["name"_L1].toString());
    return names;
}

Reply answer(HttpClient &http, const LanguageModelChoice &choice) {
    const auto chosen = choice.chosen();
    QJsonObject body;
    if (!chosen.address.isEmpty())
        body.insert(u"address"_s, chosen.address);
    if (!chosen.model.isEmpty())
        body.insert(u"model"_s, chosen.model);
    QJsonArray found;
    if (const auto models = ollamaModels(http))
        found.append(QJsonObject{{u"name"_s, u"Ollama"_s}, {u"address"_s, kOllama}, {u"models"_s, *models}});
    body.insert(u"found"_s, found);
    return {200, body};
}

Reply choose(HttpClient &http, LanguageModelChoice &choice, const Request &request) {
    const auto body = jsonObjectOf(request);
    if (!body)
        return refusalReply(body.error());
    const auto chosen =
        choice.choose({body->value("address"_L1).toString(), body->value("model"_L1).toString()});
    return chosen ? answer(http, choice) : refusalReply(chosen.error());
}

} // namespace

std::vector<Endpoint> languageModelEndpoints(HttpClient &http, LanguageModelChoice &choice) {
    return {polled({"GET", "/api/language-model", [&](const Request &) { return answer(http, choice); }}),
            {"PUT", "/api/language-model",
             [&](const Request &request) { return choose(http, choice, request); }}};
}

} // namespace velmo::localservice
