#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <optional>

namespace velmo::json {

/// The JSON object in the bytes (UTF-8), or nothing when they are no JSON or JSON of another kind.
[[nodiscard]] std::optional<QJsonObject> object(const QByteArray &bytes);

/// The JSON array in the bytes (UTF-8), or nothing when they are no JSON or JSON of another kind.
[[nodiscard]] std::optional<QJsonArray> array(const QByteArray &bytes);

/// As `array`, and every element is an object; otherwise nothing.
[[nodiscard]] std::optional<QJsonArray> arrayOfObjects(const QByteArray &bytes);

/// The member of that name when it is a string.
[[nodiscard]] std::optional<QString> string(const QJsonObject &object, QLatin1StringView member);

/// Without any white space, as UTF-8.
[[nodiscard]] QByteArray compact(const QJsonObject &object);
[[nodiscard]] QByteArray compact(const QJsonArray &array);

} // namespace velmo::json
