#include "localservice/account/session_endpoint.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// The token in "Bearer <token>"; the scheme is the same in upper and lower case (RFC 9110, 11.1).
QByteArray bearerToken(const Request &request) {
    const QByteArray value = request.header("Authorization").value_or(QByteArray());
    constexpr QByteArrayView scheme("bearer ");
    if (value.left(scheme.size()).toLower() != scheme)
        return {};
    return value.sliced(scheme.size()).trimmed();
}

Result<QJsonObject, Refusal> answer(AccountDatabase &database, const SessionWork &work,
                                    const Request &request) {
    const QByteArray token = bearerToken(request);
    if (token.isEmpty())
        return failed(Refusal{401, u"The request carries no session token. Sign in first."_s});
    return database.transaction([&](SqlRun &sql) -> Result<QJsonObject, Refusal> {
        const auto session = sessionOf(sql, token);
        if (!session)
            return failed(session.error());
        return work(sql, *session, request);
    });
}

Reply replyFor(const Result<QJsonObject, Refusal> &outcome) {
    if (outcome)
        return {200, *outcome};
    Reply reply = refusalReply(outcome.error());
    if (reply.status == 401)
        reply.headers.emplace_back("WWW-Authenticate", "Bearer");
    return reply;
}

} // namespace

Endpoint sessionEndpoint(QByteArray method, QByteArray path, AccountDatabase &database, SessionWork work) {
    return {std::move(method), std::move(path), [&database, work = std::move(work)](const Request &request) {
                return replyFor(answer(database, work, request));
            }};
}

} // namespace velmo::localservice
