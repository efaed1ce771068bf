#include "service/account/sign_in_callback.h"

#include "base/json.h"

#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// The value of the first item of that name, decoded; nothing when there is none or it is empty.
std::optional<QString> item(const QUrlQuery &query, const QString &name) {
    const QString value = query.queryItemValue(name, QUrl::FullyDecoded);
    return value.isEmpty() ? std::nullopt : std::optional(value);
}

std::optional<FullName> fullNameIn(const QString &userText) {
    const QJsonObject user = json::object(userText.toUtf8()).value_or(QJsonObject());
    const QJsonObject name = user.value("name"_L1).toObject();
    const FullName fullName{json::string(name, "firstName"_L1), json::string(name, "lastName"_L1)};
    return fullName == FullName() ? std::nullopt : std::optional(fullName);
}

} // namespace

Result<SignInCallback, CallbackProblem> readCallback(const QString &address, const QString &state) {
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid())
        return failed(CallbackProblem::Unparseable);
    const QUrlQuery query(url);
    const auto idToken = item(query, u"id_token"_s);
    const QString stateItem = u"state"_s;
    const bool isOfAnotherAttempt =
        query.hasQueryItem(stateItem) && item(query, stateItem).value_or(QString()) != state;
    if (!idToken || isOfAnotherAttempt)
        return failed(CallbackProblem::MissingIdToken);
    return SignInCallback{*idToken, fullNameIn(item(query, u"user"_s).value_or(QString()))};
}

} // namespace velmo
