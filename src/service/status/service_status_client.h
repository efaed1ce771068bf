#pragma once

#include "base/interface.h"
#include "service/http/http_message.h"
#include "service/status/service_status.h"
#include "service/wire/service_origin.h"

#include <QJsonObject>
#include <functional>

namespace velmo {

class HttpClient;

/// Asks the service about itself, and changes what it works with. Only a service on this machine is asked more than whether
/// it answers. Every operation returns at once and calls its completion exactly once, on the HTTP client's thread.
class ServiceStatusClient : private Unmovable {
public:
    template <class Value>
    using Completion = std::function<void(StatusResult<Value>)>;

    /// The HTTP client outlives this one.
    ServiceStatusClient(ServiceOrigin origin, HttpClient &http);

    [[nodiscard]] const ServiceOrigin &origin() const { return m_origin; }

    /// Whether anybody answers at the origin, whatever the answer.
    void reach(Completion<void> completion);
    void health(Completion<ServiceHealth> completion);

    void models(Completion<SpeechModels> completion);
    /// Begins, ends or chooses; answers with the models as they are then.
    void change(ModelWish wish, const QString &model, Completion<SpeechModels> completion);

    void languageModels(Completion<LanguageModels> completion);
    /// Without an address: none.
    void use(const LanguageModel &model, Completion<LanguageModels> completion);

private:
    [[nodiscard]] HttpRequest request(const char *method, const char *path) const;
    template <class Value>
    void send(HttpRequest request, Value (*read)(const QJsonObject &), Completion<Value> completion);

    const ServiceOrigin m_origin;
    HttpClient &m_http;
};

} // namespace velmo
