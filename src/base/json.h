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

/// The member of that name of the outermost object when it is written as an integer that fits 64 bits: 12, but
/// neither 12.0 nor 1e3 nor "12" nor true. It takes the text, since a parsed number no longer tells how it was
/// written.
[[nodiscard]] std::optional<qint64> integer(const QByteArray &objectText, QLatin1StringView member);

/// Without any white space, as UTF-8.
[[nodiscard]] QByteArray compact(const QJsonObject &object);
[[nodiscard]] QByteArray compact(const QJsonArray &array);

} // namespace velmo::json
