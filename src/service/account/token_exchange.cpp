#include "service/account/token_exchange.h"

#include "base/json.h"

#include <QJsonDocument>

namespace velmo {

namespace {

using ExchangeResult = Result<NewSession, ExchangeFailure>;

constexpr int kOk = 200;

QJsonObject nameObject(const FullName &name) {
    QJsonObject object;
    if (name.givenName)
        object.insert(QLatin1StringView("givenName"), *name.givenName);
    if (name.familyName)
        object.insert(QLatin1StringView("familyName"), *name.familyName);
    return object;
}

ExchangeFailure noResponse() {
    return {QStringLiteral("Token exchange failed: no response"),
            QStringLiteral("Sign-in failed — no response from server.")};
}

ExchangeFailure unreadable(const QString &reason) {
    return {QStringLiteral("Failed to parse auth response: ") + reason,
            QStringLiteral("Sign-in failed — couldn't read server response.")};
}

ExchangeFailure unexpected() {
    return {QStringLiteral("Unexpected response format"),
            QStringLiteral("Sign-in failed — unexpected server response.")};
}

ExchangeFailure refused(int status) {
    return {QStringLiteral("Token exchange failed: HTTP %1").arg(status),
            QStringLiteral("Sign-in failed (server error %1). Please try again.").arg(status)};
}

ExchangeFailure notReached(const TransportFailure &failure) {
    if (failure.kind == TransportFailure::Kind::InvalidReply)
        return noResponse();
    const QString message = failure.kind == TransportFailure::Kind::TimedOut
                                ? QStringLiteral("Server took too long to respond. Please try again.")
                                : QStringLiteral("Sign-in failed: ") + failure.description;
    return {QStringLiteral("Token exchange failed: ") + failure.description, message};
}

ExchangeResult sessionIn(const QByteArray &body) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError)
        return failed(unreadable(error.errorString()));
    const auto token = json::string(document.object(), QLatin1StringView("token"));
    const QJsonValue user = document.object().value(QLatin1StringView("user"));
    if (!token || !user.isObject())
        return failed(unexpected());
    const auto decoded = decodeUser(user.toObject());
    if (!decoded)
        return failed(unreadable(decoded.error()));
    return NewSession{*token, *decoded};
}

} // namespace

QByteArray exchangeBody(const SignInCallback &callback) {
    QJsonObject body{{QLatin1StringView("identityToken"), callback.idToken}};
    if (callback.fullName)
        body.insert(QLatin1StringView("fullName"), nameObject(*callback.fullName));
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
