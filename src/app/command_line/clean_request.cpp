#include "app/command_line/clean_request.h"

#include "base/json.h"

namespace velmo {

namespace {

using Values = std::map<QString, PreferenceValue>;

std::optional<qint64> wholeNumber(const QJsonValue &value) {
    // The answer is the default for a number with a fraction or beyond 64 bits, so two defaults tell.
    if (!value.isDouble() || value.toInteger(0) != value.toInteger(1))
        return std::nullopt;
    return value.toInteger();
}

std::optional<PreferenceValue> preferenceValue(const QJsonValue &value) {
    if (value.isString())
        return value.toString();
    if (value.isBool())
        return value.toBool();
    if (const auto number = wholeNumber(value))
        return *number;
    return std::nullopt;
}

Result<Values, QString> preferenceValues(const QJsonValue &object) {
    if (!object.isObject())
        return failed(QStringLiteral("\"prefs\" is no object"));
    Values values;
    const QJsonObject members = object.toObject();
    for (auto member = members.begin(); member != members.end(); ++member) {
        auto value = preferenceValue(member.value());
        if (!value)
            return failed(QStringLiteral("preference \"%1\" is no string, true, false or whole number")
                              .arg(member.key()));
        values.emplace(member.key(), std::move(*value));
    }
    return values;
}

} // namespace

Result<CleanRequest, QString> parseCleanRequest(const QByteArray &line) {
    const auto object = json::object(QString::fromUtf8(line).toUtf8());
    if (!object)
        return failed(QStringLiteral("the line is no JSON object"));
    const QJsonValue prefs = object->value(QLatin1StringView("prefs"));
    const QJsonValue detected = object->value(QLatin1StringView("detected"));
    const QJsonValue text = object->value(QLatin1StringView("text"));
    if (!text.isString())
        return failed(QStringLiteral("\"text\" is no string"));
    if (!detected.isUndefined() && !detected.isNull() && !detected.isString())
        return failed(QStringLiteral("\"detected\" is neither a string nor null"));

    CleanRequest request;
    request.text = text.toString();
    if (detected.isString())
        request.detectedLanguage = detected.toString();
    if (!prefs.isUndefined()) {
        auto values = preferenceValues(prefs);
        if (!values)
            return failed(values.error());
        request.preferences = std::move(*values);
    }
    return request;
}

} // namespace velmo
