#include "json_request.h"

#include "base/json.h"

namespace velmo::localservice {

Result<QJsonObject, Refusal> jsonObjectOf(const Request &request) {
    if (auto object = json::object(request.body))
        return *object;
    return failed(Refusal{400, QStringLiteral("The body is no JSON object.")});
}

Result<QString, Refusal> textMember(const QJsonObject &object, QLatin1StringView name) {
    if (!object.contains(name))
        return failed(Refusal{400, QStringLiteral("The member \"%1\" is missing.").arg(name)});
    const auto text = json::string(object, name);
    if (!text)
        return failed(Refusal{400, QStringLiteral("The member \"%1\" is no string.").arg(name)});
    if (text->isEmpty())
        return failed(Refusal{400, QStringLiteral("The member \"%1\" is empty.").arg(name)});
    return *text;
}

Reply textReply(const Result<QString, Refusal> &text) {
    if (!text)
        return refusalReply(text.error());
    return {200, {{QStringLiteral("text"), *text}}};
}

} // namespace velmo::localservice
