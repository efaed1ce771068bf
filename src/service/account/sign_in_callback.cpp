#include "service/account/sign_in_callback.h"

#include "base/json.h"

#include <QUrl>
#include <QUrlQuery>

namespace velmo {

namespace {

/// The value of the first item of that name, decoded; nothing when there is none or it is empty.
std::optional<QString> item(const QUrlQuery &query, const QString &name) {
    const QString value = query.queryItemValue(name, QUrl::FullyDecoded);
    return value.isEmpty() ? std::nullopt : std::optional(value);
}

std::optional<FullName> fullNameIn(const QString &userText) {
    const QJsonObject user = json::object(userText.toUtf8()).value_or(QJsonObject());
    const QJsonObject name = user.value(QLatin1StringView("name")).toObject();
    const FullName fullName{json::string(name, QLatin1StringView("firstName")),
                            json::string(name, QLatin1StringView("lastName"))};
    return fullName == FullName() ? std::nullopt : std::optional(fullName);
}

} // namespace

Result<SignInCallback, CallbackProblem> readCallback(const QString &address, const QString &state) {
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid())
        return failed(CallbackProblem::Unparseable);
    const QUrlQuery query(url);
    const auto idToken = item(query, QStringLiteral("id_token"));
    const QString stateItem = QStringLiteral("state");
    const bool isOfAnotherAttempt =
        query.hasQueryItem(stateItem) && item(query, stateItem).value_or(QString()) != state;
    if (!idToken || isOfAnotherAttempt)
        return failed(CallbackProblem::MissingIdToken);
    return SignInCallback{*idToken, fullNameIn(item(query, QStringLiteral("user")).value_or(QString()))};
}

} // namespace velmo
