#include "localservice/account/authorization_request.h"

#include "service/http/loopback.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr qsizetype kLongestState = 200;
constexpr int kDefaultPort = 80;

struct FixedField {
    QLatin1StringView name;
    QLatin1StringView value;
};

constexpr FixedField kClient{"client_id"_L1, "com.tarnwell.velmo.web"_L1};
constexpr FixedField kOthers[] = {
    {"response_type"_L1, "code id_token"_L1},
    {"scope"_L1, "name email"_L1},
    {"response_mode"_L1, "form_post"_L1},
};

constexpr QLatin1StringView kRedirectUri("redirect_uri");
constexpr QLatin1StringView kState("state");

bool isAsFixed(const FormFields &fields, const FixedField &field) {
    return fields.value(field.name) == field.value;
}

QString mustBe(const FixedField &field) {
    return u"%1 is not “%2”."_s.arg(field.name, field.value);
}

bool isOwnCallback(const QString &address, const QString &host) {
    const QUrl own(u"http://"_s + host);
    const QUrl url(address, QUrl::StrictMode);
    return url.isValid() && url.scheme() == u"http" && isLoopbackHost(url.host()) &&
           url.port(kDefaultPort) == own.port(kDefaultPort) && url.path() == kCallbackPath &&
           url.userInfo().isEmpty() && !url.hasQuery() && !url.hasFragment();
}

bool isState(const QString &state) {
    return !state.isEmpty() && state.size() <= kLongestState;
}

} // namespace

Result<AuthorizationRequest, QString> readAuthorizationRequest(const FormFields &fields,
                                                               const QString &host) {
    if (!isAsFixed(fields, kClient))
        return failed(mustBe(kClient));
    const QString redirectUri = fields.value(kRedirectUri);
    if (!isOwnCallback(redirectUri, host))
        return failed(u"redirect_uri is not the callback of this service."_s);
    for (const FixedField &field : kOthers) {
        if (!isAsFixed(fields, field))
            return failed(mustBe(field));
    }
    const QString state = fields.value(kState);
    if (!isState(state))
        return failed(
            u"state is missing, or longer than %1 characters."_s.arg(QString::number(kLongestState)));
    return AuthorizationRequest{redirectUri, state};
}

std::vector<std::pair<QString, QString>> fieldsOf(const AuthorizationRequest &request) {
    std::vector<std::pair<QString, QString>> fields = {{kClient.name, kClient.value},
                                                       {kRedirectUri, request.redirectUri}};
    for (const FixedField &field : kOthers)
        fields.emplace_back(field.name, field.value);
    fields.emplace_back(kState, request.state);
    return fields;
}

std::optional<QString> faultInSender(const Request &request) {
    if (!request.isFromLoopback)
        return u"Signing in is for this machine alone, at its loopback address."_s;
    const auto origin = request.header("Origin");
    if (origin && *origin != "http://" + request.header("Host").value_or(QByteArray()))
        return u"The form was sent by another page."_s;
    return std::nullopt;
}

} // namespace velmo::localservice
