#include "service/wire/service_reply.h"

#include "base/json.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr int kOk = 200;

TranscriptionError errorOf(const TransportFailure &failure) {
    switch (failure.kind) {
    case TransportFailure::Kind::TimedOut:
        return TranscriptionError::timeout();
    case TransportFailure::Kind::InvalidReply:
        return TranscriptionError::invalidResponse();
    case TransportFailure::Kind::Network:
    case TransportFailure::Kind::InvalidAddress:
        break;
    }
    return TranscriptionError::networkError(failure.description);
}

} // namespace

std::optional<QString> errorMemberOf(const HttpReply &reply) {
    const auto object = json::object(reply.body);
    return object ? json::string(*object, "error"_L1) : std::nullopt;
}

Result<QJsonObject, TranscriptionError> objectOf(const HttpOutcome &outcome) {
    if (!outcome)
        return failed(errorOf(outcome.error()));
    if (outcome->status != kOk)
        return failed(TranscriptionError::serverError(outcome->status, errorMemberOf(*outcome)));
    const auto object = json::object(outcome->body);
    if (!object)
        return failed(TranscriptionError::invalidResponse());
    return *object;
}

} // namespace velmo
