#include "service/sync/sync_exchange.h"

#include "base/json.h"
#include "service/http/http_client.h"
#include "service/wire/service_reply.h"
#include "service/wire/session_interfaces.h"

#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const QString kDomain = u"SyncManager"_s;

SyncFailure failureOf(const TransportFailure &failure) {
    using Kind = TransportFailure::Kind;
    switch (failure.kind) {
    case Kind::InvalidAddress:
        return {kDomain, -1, u"Invalid URL"_s};
    case Kind::InvalidReply:
        return {kDomain, -2, u"No response"_s};
    case Kind::TimedOut:
        return {u"Transport"_s, -1001, failure.description};
    case Kind::Network:
        break;
    }
    return {u"Transport"_s, -1, failure.description};
}

bool isSuccess(int status) {
    return status >= 200 && status <= 299;
}

} // namespace

QString SyncFailure::description() const {
    return u"Error Domain=%1 Code=%2 \"%3\""_s.arg(domain, QString::number(code), message);
}

SyncReply syncReply(const HttpOutcome &outcome) {
    if (!outcome)
        return failed(failureOf(outcome.error()));
    if (!isSuccess(outcome->status)) {
        const auto message = errorMemberOf(*outcome);
        return failed(
            SyncFailure{kDomain, outcome->status, message.value_or(u"HTTP %1"_s.arg(outcome->status))});
    }
    return SyncBody{outcome->body, json::object(outcome->body).value_or(QJsonObject())};
}

SyncExchange::SyncExchange(ServiceOrigin origin, const Collaborators &collaborators)
    : m_origin(std::move(origin)), m_with(collaborators) {}

void SyncExchange::onWorker(std::function<void()> task) {
    m_with.worker.start(std::move(task));
}

void SyncExchange::waitForWorker() {
    m_with.worker.waitForDone();
}

void SyncExchange::onMain(std::function<void()> task) {
    m_with.queue.post(m_lifetime.guard(std::move(task)));
}

std::optional<QString> SyncExchange::token() {
    return m_with.tokens.authToken();
}

void SyncExchange::send(RequestKind kind, const QString &token, std::optional<QByteArray> body,
                        Answer answer) {
    m_with.http.send(serviceRequest(kind, m_origin, {token, {}, {}}, {std::move(body)}),
                     [answer = velmo::onMain(m_with.queue, m_lifetime, std::move(answer))](
                         const HttpOutcome &outcome) { answer(syncReply(outcome)); });
}

} // namespace velmo
