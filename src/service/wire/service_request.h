#pragma once

#include "service/http/http_message.h"
#include "service/wire/request_sender.h"
#include "service/wire/service_origin.h"

namespace velmo {

/// Every request Velmo makes of the service. Each is a single exchange and never repeated by itself.
enum class RequestKind {
    Transcription,
    ModeProcessing,
    BokmalNormalisation,
    DictionaryPull,
    DictionaryPush,
    SnippetsPull,
    SnippetsPush,
    StatisticsPull,
    StatisticsPush,
    StatisticsIncrement,
    TokenExchange,
    AccountRefresh,
};

struct RequestContent {
    std::optional<QByteArray> body;
    QByteArray type = "application/json";
};

/// The request of that kind, ready to be sent: method, address, limits, and the headers of its kind in their
/// order. Those of an account need the sender's token: without one such a request is not made at all.
[[nodiscard]] HttpRequest serviceRequest(RequestKind kind, const ServiceOrigin &origin,
                                         const RequestSender &sender, RequestContent content);

} // namespace velmo
