#include "service/account/token_exchange.h"

#include "base/json.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using ExchangeResult = Result<NewSession, ExchangeFailure>;

constexpr int kOk = 200;

QJsonObject nameObject(const FullName &name) {
    QJsonObject object;
    if (name.givenName)
        object.insert("givenName"_L1, *name.givenName);
    if (name.familyName)
        object.insert("familyName"_L1, *name.familyName);
    return object;
}

ExchangeFailure noResponse() {
    return {u"Token exchange failed: no response"_s, u"Sign-in failed — no response from server."_s};
}

ExchangeFailure unreadable(const QString &reason) {
    return {u"Failed to parse auth response: "_s + reason,
            u"Sign-in failed — couldn't read server response."_s};
}

ExchangeFailure unexpected() {
    return {u"Unexpected response format"_s, u"Sign-in failed — unexpected server response."_s};
}

ExchangeFailure refused(int status) {
    return {u"Token exchange failed: HTTP %1"_s.arg(status),
            u"Sign-in failed (server error %1). Please try again."_s.arg(status)};
}

ExchangeFailure notReached(const TransportFailure &failure) {
    if (failure.kind == TransportFailure::Kind::InvalidReply)
        return noResponse();
    const QString message = failure.kind == TransportFailure::Kind::TimedOut
                                ? u"Server took too long to respond. Please try again."_s
                                : u"Sign-in failed: "_s + failure.description;
    return {u"Token exchange failed: "_s + failure.description, message};
}

ExchangeResult sessionIn(const QByteArray &body) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError)
        return failed(unreadable(error.errorString()));
    const auto token = json::string(document.object(), "token"_L1);
    const QJsonValue user = document.object().value("user"_L1);
    if (!token || !user.isObject())
        return failed(unexpected());
    const auto decoded = decodeUser(user.toObject());
    if (!decoded)
        return failed(unreadable(decoded.error()));
    return NewSession{*token, *decoded};
}

} // namespace

QByteArray exchangeBody(const SignInCallback &callback) {
    QJsonObject body{{"identityToken"_L1, callback.idToken}};
    if (callback.fullName)
        body.insert("fullName"_L1, nameObject(*callback.fullName));
    return json::compact(body);
}

ExchangeResult exchangeResult(const HttpOutcome &outcome) {
    if (!outcome)
        return failed(notReached(outcome.error()));
    if (outcome->status != kOk)
        return failed(refused(outcome->status));
    if (outcome->body.isEmpty())
        return failed(noResponse());
    return sessionIn(outcome->body);
}

} // namespace velmo
