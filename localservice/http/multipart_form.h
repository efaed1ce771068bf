#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace velmo::localservice {

/// A recording as Velmo uploads it.
struct Upload {
    QByteArray audio;       ///< The bytes of the file.
    QString fileName;       ///< "recording.wav": its extension is the file's own, in lower case.
    QByteArray contentType; ///< "audio/wav" for that extension, "audio/m4a" for every other.
    QString prompt;         ///< Hint words joined with ", "; empty when there are none.
    QString language;       ///< The primary language's code.
    QStringList languages;  ///< The selected languages' codes.
};

/// Takes an upload apart. It must have exactly the form Velmo sends:
///
///     Content-Type: multipart/form-data; boundary=Boundary-9F1C2B9E-8D47-4A0E-9B51-6C2D7E8F9A10
///
/// and the parts audio, prompt (only when there are hint words), language, languages (a JSON array of
/// strings) and source ("mac"), in this order, lines ended by CR LF, nothing before, between or after them.
/// So a client that strays from the form learns it here, and from a sentence that names the piece at fault.
[[nodiscard]] Result<Upload, QString> parseUpload(const QByteArray &contentType, const QByteArray &body);

/// The same upload of a recording that is still being made has the part audio at its end, so that all else is known before
/// the first sound.
namespace live {

/// Where the recording begins in a body of which this has come; -1: not yet.
[[nodiscard]] qsizetype startOfAudio(QByteArrayView body);

/// Takes what stands before the recording apart.
[[nodiscard]] Result<Upload, QString> parseStart(const QByteArray &contentType, QByteArrayView start);

/// What stands behind it; empty when the type is none of an upload's.
[[nodiscard]] QByteArray endOfBody(const QByteArray &contentType);

} // namespace live

} // namespace velmo::localservice
