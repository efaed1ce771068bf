#include "localservice/account/endpoints.h"

#include "base/json.h"
#include "localservice/account/person.h"
#include "localservice/account/session_endpoint.h"
#include "localservice/http/json_request.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

QJsonObject objectOf(const VelmoUser &user) {
    return json::object(encodeUser(user)).value_or(QJsonObject());
}

Refusal faultIn(const char *member) {
    return {400, u"The member \"%1\" is no name."_s.arg(QLatin1StringView(member))};
}

/// The part of a name; empty where the object has none.
Result<QString, Refusal> namePart(const QJsonObject &object, const char *member) {
    const QJsonValue value = object.value(QLatin1StringView(member));
    if (value.isUndefined())
        return QString();
    if (!value.isString() || !isNamePart(value.toString()))
        return failed(faultIn(member));
    return value.toString();
}

/// The whole name; empty where the request has none.
Result<QString, Refusal> fullName(const QJsonObject &body) {
    const QJsonValue value = body.value("fullName"_L1);
    if (!value.isUndefined() && !value.isObject())
        return failed(faultIn("fullName"));
    const auto given = namePart(value.toObject(), "givenName");
    if (!given)
        return failed(given.error());
    const auto family = namePart(value.toObject(), "familyName");
    if (!family)
        return failed(family.error());
    return joinedName(*given, *family);
}

Result<QJsonObject, Refusal> exchange(Accounts &accounts, const Request &request) {
    const auto body = jsonObjectOf(request);
    if (!body)
        return failed(body.error());
    const auto token = textMember(*body, "identityToken"_L1);
    if (!token)
        return failed(token.error());
    const auto name = fullName(*body);
    if (!name)
        return failed(name.error());
    const auto signedIn = accounts.signIn(*token, *name);
    if (!signedIn)
        return failed(signedIn.error());
    return QJsonObject{{u"token"_s, signedIn->token}, {u"user"_s, objectOf(signedIn->user)}};
}

Result<QJsonObject, Refusal> whoIsSignedIn(SqlRun &sql, const Session &session, const Request &) {
    return QJsonObject{{u"user"_s, objectOf(userOf(sql, session))}};
}

} // namespace

Endpoint tokenExchangeEndpoint(Accounts &accounts) {
    return {"POST", "/api/auth/apple", [&accounts](const Request &request) {
                const auto session = exchange(accounts, request);
                return session ? Reply{200, *session} : refusalReply(session.error());
            }};
}

Endpoint accountEndpoint(AccountDatabase &database) {
    return sessionEndpoint("POST", "/api/auth/me", database, whoIsSignedIn);
}

} // namespace velmo::localservice
