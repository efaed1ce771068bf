#pragma once

#include "service/transcription/transcription.h"

#include <QByteArray>
#include <optional>

class QIODevice;

/// The body of an upload as multipart/form-data. Line ends are CR LF, text is UTF-8.
namespace velmo {

/// "Boundary-" and an upper-case UUID; a new one for each upload.
[[nodiscard]] QByteArray newBoundary();

[[nodiscard]] QByteArray multipartContentType(const QByteArray &boundary);

/// The whole body: the parts "audio" (the recording's bytes unchanged), "prompt" (only one that is not empty),
/// "language", "languages" and "source". The file is named "recording." and the path's extension in lower case
/// (perhaps none); its type is audio/wav for "wav" and audio/m4a for everything else. Nothing when the
/// recording cannot be read.
[[nodiscard]] std::optional<QByteArray> multipartBody(const QByteArray &boundary, const QString &path,
                                                      QIODevice &recording,
                                                      const TranscriptionSettings &settings);

/// The same upload for a recording that is still being made: the parts that are known come first, "audio" last. What
/// stands before the recording's bytes, and behind them.
[[nodiscard]] QByteArray liveBodyStart(const QByteArray &boundary, const QString &path,
                                       const TranscriptionSettings &settings);
[[nodiscard]] QByteArray liveBodyEnd(const QByteArray &boundary);

/// The selected codes as a JSON array: "no, sv ,,da" becomes ["no","sv","","da"]. Blanks around a code go,
/// line breaks and empty codes stay.
[[nodiscard]] QByteArray languagesJson(const QString &languages);

} // namespace velmo
