#include "localservice/account/endpoints.h"

#include "base/json.h"
#include "localservice/account/person.h"
#include "localservice/account/sign_in_form.h"
#include "localservice/http/page.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr QLatin1StringView kIdToken("id_token");
constexpr QLatin1StringView kState("state");
constexpr QLatin1StringView kUser("user");

Result<AuthorizationRequest, Refusal> authorizationIn(const FormFields &fields, const Request &request) {
    if (const auto fault = faultInSender(request))
        return failed(Refusal{403, *fault});
    const QString host = QString::fromLatin1(request.header("Host").value_or(QByteArray()));
    const auto authorization = readAuthorizationRequest(fields, host);
    if (!authorization)
        return failed(Refusal{400, u"This address is not one that Velmo opens: "_s + authorization.error()});
    return *authorization;
}

Reply faultPage(const Refusal &refusal) {
    return localservice::faultPage(refusal.status, refusal.sentence);
}

QString userText(const SignInEntry &entry) {
    QJsonObject name;
    if (!entry.givenName.isEmpty())
        name.insert(u"firstName"_s, entry.givenName);
    if (!entry.familyName.isEmpty())
        name.insert(u"lastName"_s, entry.familyName);
    return QString::fromUtf8(json::compact(QJsonObject{{u"name"_s, name}}));
}

/// The client hears of a name the first time, and when it has changed.
bool isNews(const SignInEntry &entry, const std::optional<QString> &known) {
    const QString name = joinedName(entry.givenName, entry.familyName);
    return !name.isEmpty() && name != known;
}

Reply signIn(Accounts &accounts, const AuthorizationRequest &authorization, const SignInEntry &entry) {
    if (const SignInFaults faults = faultsIn(entry); !faults.isEmpty())
        return signInForm(authorization, entry, faults);
    const auto known = accounts.nameOf(entry.email);
    if (!known)
        return faultPage(known.error());
    const bool hasNews = isNews(entry, *known);
    if (!*known && !hasNews)
        return signInForm(authorization, entry, missingName());
    const auto token = accounts.issueIdentityToken(entry.email);
    if (!token)
        return faultPage(token.error());
    return continuePage({*token, authorization.state, hasNews ? userText(entry) : QString()}, entry.email);
}

QByteArray item(QLatin1StringView name, const QString &value) {
    return QByteArray(name.data(), name.size()) + '=' + QUrl::toPercentEncoding(value);
}

Reply lead(const FormFields &fields) {
    const QString idToken = fields.value(kIdToken);
    const QString state = fields.value(kState);
    if (idToken.isEmpty() || state.isEmpty())
        return faultPage({400, u"id_token or state is missing."_s});
    const QString user = fields.value(kUser);
    if (!user.isEmpty() && !json::object(user.toUtf8()))
        return faultPage({400, u"user is no JSON object."_s});
    QByteArray address = "velmo://auth?" + item(kIdToken, idToken) + '&' + item(kState, state);
    if (!user.isEmpty())
        address += '&' + item(kUser, user);
    return {303, {}, {{"Location", address}}};
}

} // namespace

Endpoint signInPageEndpoint() {
    return {"GET", "/auth/authorize", [](const Request &request) {
                const auto authorization = authorizationIn(FormFields(request.query), request);
                return authorization ? signInForm(*authorization, {}, {}) : faultPage(authorization.error());
            }};
}

Endpoint signInEndpoint(Accounts &accounts) {
    return {"POST", "/auth/authorize", [&accounts](const Request &request) {
                const FormFields fields(request.body);
                const auto authorization = authorizationIn(fields, request);
                return authorization ? signIn(accounts, *authorization, signInEntry(fields))
                                     : faultPage(authorization.error());
            }};
}

Endpoint signInCallbackEndpoint() {
    return {"POST", QByteArray(kCallbackPath.data()), [](const Request &request) {
                if (const auto fault = faultInSender(request))
                    return faultPage({403, *fault});
                return lead(FormFields(request.body));
            }};
}

} // namespace velmo::localservice
