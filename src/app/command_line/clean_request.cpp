#include "app/command_line/clean_request.h"

#include "base/json.h"

using namespace Qt::StringLiterals;

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
        return failed(u"\"prefs\" is no object"_s);
    Values values;
    const QJsonObject members = object.toObject();
    for (auto member = members.begin(); member != members.end(); ++member) {
        auto value = preferenceValue(member.value());
        if (!value)
            return failed(u"preference \"%1\" is no string, true, false or whole number"_s.arg(member.key()));
        values.emplace(member.key(), std::move(*value));
    }
    return values;
}

} // namespace

Result<CleanRequest, QString> parseCleanRequest(const QByteArray &line) {
    const auto object = json::object(QString::fromUtf8(line).toUtf8());
    if (!object)
        return failed(u"the line is no JSON object"_s);
    const QJsonValue prefs = object->value("prefs"_L1);
    const QJsonValue detected = object->value("detected"_L1);
    const QJsonValue text = object->value("text"_L1);
    if (!text.isString())
        return failed(u"\"text\" is no string"_s);
    if (!detected.isUndefined() && !detected.isNull() && !detected.isString())
        return failed(u"\"detected\" is neither a string nor null"_s);

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
