#pragma once

#include "base/result.h"
#include "localservice/http/endpoint.h"

#include <QJsonArray>

namespace velmo::localservice {

/// The JSON object that is the body of a request; otherwise 400.
[[nodiscard]] Result<QJsonObject, Refusal> jsonObjectOf(const Request &request);

/// The string of that name, which must be there and not empty; otherwise 400 and the member at fault.
[[nodiscard]] Result<QString, Refusal> textMember(const QJsonObject &object, QLatin1StringView name);

/// The array of that name in the JSON object that is the body of a request; otherwise 400 and what is at fault.
[[nodiscard]] Result<QJsonArray, Refusal> arrayMember(const Request &request, QLatin1StringView name);

/// The value when it is a string of at most so many UTF-16 units; otherwise 400 and the name of the piece.
[[nodiscard]] Result<QString, Refusal> textWithin(const QJsonValue &value, const QString &name,
                                                  qsizetype longest);

/// The whole number of that name in the body, from zero to `most`; otherwise 400 and what is at fault. 12.0 and true are
/// no whole numbers.
[[nodiscard]] Result<qint64, Refusal> countMember(const Request &request, QLatin1StringView name,
                                                  qint64 most);

/// The refusal of a list that would become too long.
[[nodiscard]] Refusal tooMany(const QString &items, qint64 most);

/// {"text": …}, or the refusal.
[[nodiscard]] Reply textReply(const Result<QString, Refusal> &text);

} // namespace velmo::localservice
