#pragma once

#include "service/http/http_message.h"
#include "service/wire/transcription_error.h"

#include <QJsonObject>

namespace velmo {

/// Why the service refused, in its own words: the string member "error" of the reply's JSON object, or nothing
/// when the body is another or none.
[[nodiscard]] std::optional<QString> errorMemberOf(const HttpReply &reply);

/// The JSON object of a success. A success is status 200 alone: every other status, 201 and 204 too, is the
/// server's error, and a 200 without a JSON object an invalid response.
[[nodiscard]] Result<QJsonObject, TranscriptionError> objectOf(const HttpOutcome &outcome);

} // namespace velmo
