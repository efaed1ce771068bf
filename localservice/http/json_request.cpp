#include "localservice/http/json_request.h"

#include "base/json.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

Result<QJsonObject, Refusal> jsonObjectOf(const Request &request) {
    if (auto object = json::object(request.body))
        return *object;
    return failed(Refusal{400, u"The body is no JSON object."_s});
}

Result<QString, Refusal> textMember(const QJsonObject &object, QLatin1StringView name) {
    if (!object.contains(name))
        return failed(Refusal{400, u"The member \"%1\" is missing."_s.arg(name)});
    const auto text = json::string(object, name);
    if (!text)
        return failed(Refusal{400, u"The member \"%1\" is no string."_s.arg(name)});
    if (text->isEmpty())
        return failed(Refusal{400, u"The member \"%1\" is empty."_s.arg(name)});
    return *text;
}

Result<QJsonArray, Refusal> arrayMember(const Request &request, QLatin1StringView name) {
    const auto object = jsonObjectOf(request);
    if (!object)
        return failed(object.error());
    if (!object->value(name).isArray())
        return failed(Refusal{400, u"The member \"%1\" is missing or no array."_s.arg(name)});
    return object->value(name).toArray();
}

Result<QString, Refusal> textWithin(const QJsonValue &value, const QString &name, qsizetype longest) {
    if (!value.isString())
        return failed(Refusal{400, u"\"%1\" is missing or no string."_s.arg(name)});
    const QString text = value.toString();
    if (text.size() > longest)
        return failed(
            Refusal{400, u"\"%1\" is longer than %2 characters."_s.arg(name, QString::number(longest))});
    return text;
}

Result<qint64, Refusal> countMember(const Request &request, QLatin1StringView name, qint64 most) {
    if (const auto object = jsonObjectOf(request); !object)
        return failed(object.error());
    const auto count = json::integer(request.body, name);
    if (!count || *count < 0 || *count > most)
        return failed(Refusal{
            400, u"The member \"%1\" is no whole number from 0 to %2."_s.arg(name, QString::number(most))});
    return *count;
}

Refusal tooMany(const QString &items, qint64 most) {
    return {400, u"The account would have more than %1 %2."_s.arg(QString::number(most), items)};
}

Reply textReply(const Result<QString, Refusal> &text) {
    if (!text)
        return refusalReply(text.error());
    return {200, {{u"text"_s, *text}}};
}

} // namespace velmo::localservice
