#include "base/json.h"

#include <QJsonDocument>
#include <algorithm>

namespace velmo::json {

std::optional<QJsonObject> object(const QByteArray &bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return std::nullopt;
    return document.object();
}

std::optional<QJsonArray> array(const QByteArray &bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isArray())
        return std::nullopt;
    return document.array();
}

std::optional<QJsonArray> arrayOfObjects(const QByteArray &bytes) {
    auto elements = array(bytes);
    if (elements && !std::all_of(elements->begin(), elements->end(),
                                 [](const QJsonValueRef &element) { return element.isObject(); }))
        return std::nullopt;
    return elements;
}

std::optional<QString> string(const QJsonObject &object, QLatin1StringView member) {
    const QJsonValue value = object.value(member);
    if (!value.isString())
        return std::nullopt;
    return value.toString();
}

QByteArray compact(const QJsonObject &object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray compact(const QJsonArray &array) {
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace velmo::json
