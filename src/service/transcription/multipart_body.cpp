#include "service/transcription/multipart_body.h"

#include "base/characters.h"
#include "base/json.h"
#include "base/uuid.h"

#include <QFileInfo>
#include <QIODevice>

namespace velmo {

namespace {

constexpr char kLineEnd[] = "\r\n";

/// What would end the quoted name, or its line, is written as browsers write it
/// (https://html.spec.whatwg.org/multipage/form-control-infrastructure.html#multipart-form-data).
QByteArray quotable(const QString &name) {
    return name.toUtf8().replace('\n', "%0A").replace('\r', "%0D").replace('"', "%22");
}

QByteArray delimiter(const QByteArray &boundary) {
    return "--" + boundary + kLineEnd;
}

QByteArray field(const QByteArray &boundary, const QByteArray &name, const QByteArray &value) {
    return delimiter(boundary) + "Content-Disposition: form-data; name=\"" + name + '"' + kLineEnd +
           kLineEnd + value + kLineEnd;
}

/// Opens the part that the recording's bytes fill.
QByteArray startOf(const QByteArray &boundary, const QString &path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    const QByteArray type = extension == u"wav" ? "audio/wav" : "audio/m4a";
    return delimiter(boundary) + "Content-Disposition: form-data; name=\"audio\"; filename=\"recording." +
           quotable(extension) + '"' + kLineEnd + "Content-Type: " + type + kLineEnd + kLineEnd;
}

QByteArray fieldsOf(const QByteArray &boundary, const TranscriptionSettings &settings) {
    QByteArray fields;
    if (settings.prompt && !settings.prompt->isEmpty())
        fields += field(boundary, "prompt", settings.prompt->toUtf8());
    fields += field(boundary, "language", settings.language.toUtf8());
    fields += field(boundary, "languages", languagesJson(settings.languages));
    return fields += field(boundary, "source", "mac");
}

QByteArray lastDelimiter(const QByteArray &boundary) {
    return "--" + boundary + "--" + kLineEnd;
}

} // namespace

QByteArray newBoundary() {
    return "Boundary-" + newUpperUuid().toLatin1();
}

QByteArray multipartContentType(const QByteArray &boundary) {
    return "multipart/form-data; boundary=" + boundary;
}

/// In one piece of memory of the right size, the recording read straight into it: a minute of speech is 2 MB.
std::optional<QByteArray> multipartBody(const QByteArray &boundary, const QString &path, QIODevice &recording,
                                        const TranscriptionSettings &settings) {
    QByteArray body = startOf(boundary, path);
    const QByteArray end = kLineEnd + fieldsOf(boundary, settings) + lastDelimiter(boundary);
    const qsizetype start = body.size();
    const qint64 size = recording.size();
    body.reserve(start + size + end.size());
    body.resize(start + size);
    const qint64 read = recording.read(body.data() + start, size);
    if (read < 0)
        return std::nullopt;
    body.resize(start + read);
    return body += end;
}

QByteArray liveBodyStart(const QByteArray &boundary, const QString &path,
                         const TranscriptionSettings &settings) {
    return fieldsOf(boundary, settings) + startOf(boundary, path);
}

QByteArray liveBodyEnd(const QByteArray &boundary) {
    return kLineEnd + lastDelimiter(boundary);
}

QByteArray languagesJson(const QString &languages) {
    QJsonArray codes;
    for (const QStringView code : QStringView(languages).split(u','))
        codes.append(trimmedOfBlanks(code).toString());
    return json::compact(codes);
}

} // namespace velmo
