#include "service/transcription/transcription_client.h"

#include "base/characters.h"
#include "base/json.h"
#include "base/log.h"
#include "service/http/http_client.h"
#include "service/transcription/live_upload.h"
#include "service/transcription/multipart_body.h"
#include "service/wire/service_reply.h"
#include "service/wire/session_interfaces.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using Clock = std::chrono::steady_clock;

/// A WAVE file below this holds less than 0.03 s of sound.
constexpr qint64 kSmallestRecording = 1000;
/// More than two hours of our own recordings, and more than services take. A body is held in memory, where what is
/// larger may not fit.
constexpr qint64 kLargestRecording = 256LL * 1024 * 1024;
constexpr qint64 kKilobyte = 1024;
constexpr qsizetype kLoggedCharacters = 50;

using OpenRecording = Result<std::shared_ptr<QFile>, TranscriptionError>;

/// Opened before the caller goes on: from here the file may be removed at any time.
OpenRecording openRecording(const QString &path) {
    const QFileInfo info(path);
    if (!info.exists())
        return failed(TranscriptionError::fileNotFound());
    if (info.size() < kSmallestRecording) {
        log(LogTag::Tx, u"File too small: %1 bytes"_s.arg(info.size()));
        return failed(TranscriptionError::fileTooSmall());
    }
    log(LogTag::Tx, u"File size: %1 bytes"_s.arg(info.size()));
    if (info.size() > kLargestRecording)
        return failed(TranscriptionError::networkError(u"The recording is too large to upload."_s));
    auto file = std::make_shared<QFile>(path);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failed(TranscriptionError::fileNotFound());
    return file;
}

void logUpload(const QString &path, qint64 bodySize) {
    log(LogTag::Latency,
        u"Uploading %1KB audio (%2KB total) to Whisper"_s.arg(QFileInfo(path).size() / kKilobyte)
            .arg(bodySize / kKilobyte));
}

TranscriptionResult transcriptOf(const QJsonObject &reply) {
    const auto text = json::string(reply, "text"_L1);
    if (!text)
        return failed(TranscriptionError::invalidResponse());
    const auto language = json::string(reply, "detectedLanguage"_L1);
    log(LogTag::Tx,
        u"Success: %1... (lang: %2)"_s.arg(firstCharacters(*text, kLoggedCharacters),
                                           language ? QStringView(*language) : QStringView(u"nil")));
    return Transcript{*text, language};
}

TranscriptionResult resultOf(const HttpOutcome &outcome, Clock::time_point sent) {
    const std::chrono::duration<double, std::milli> elapsed = Clock::now() - sent;
    log(LogTag::Latency, u"Whisper upload+response: %1ms"_s.arg(fixed(elapsed.count(), 0)));
    return objectOf(outcome).and_then(transcriptOf);
}

/// What an upload in the usual way needs; the client may be gone when a live one turns out to be broken.
struct Upload {
    ServiceOrigin origin;
    HttpClient &http;
    std::optional<HttpLimits> limits;
    std::shared_ptr<QFile> file;
    TranscriptionSettings settings;
    Transcriber::Completion completion;

    void send(const RequestSender &sender) const;
};

/// Whether the live upload brings the answer.
bool finishLive(LiveUpload &live, const Upload &upload) {
    const auto size = live.sizeIfSending(*upload.file, upload.settings);
    if (!size)
        return false;
    logUpload(upload.file->fileName(), *size);
    const auto answered = [completion = upload.completion, sent = Clock::now()](const HttpOutcome &outcome) {
        completion(resultOf(outcome, sent));
    };
    return live.finish({answered, [upload](const RequestSender &sender) { upload.send(sender); }});
}

void Upload::send(const RequestSender &sender) const {
    const QByteArray boundary = newBoundary();
    auto body = multipartBody(boundary, file->fileName(), *file, settings);
    if (!body) {
        completion(failed(TranscriptionError::fileNotFound()));
        return;
    }
    logUpload(file->fileName(), body->size());
    HttpRequest request = serviceRequest(RequestKind::Transcription, origin, sender,
                                         {std::move(body), multipartContentType(boundary)});
    request.limits = limits.value_or(request.limits);
    http.send(std::move(request), [completion = completion, sent = Clock::now()](const HttpOutcome &outcome) {
        completion(resultOf(outcome, sent));
    });
}

} // namespace

TranscriptionClient::TranscriptionClient(ServiceOrigin origin, HttpClient &http, TokenSource &tokens,
                                         Preferences &preferences, std::optional<HttpLimits> limits)
    : m_origin(std::move(origin)),
      m_http(http),
      m_tokens(tokens),
      m_preferences(preferences),
      m_limits(limits) {
    m_worker.setMaxThreadCount(1);
}

TranscriptionClient::~TranscriptionClient() {
    abandon();
}

void TranscriptionClient::prepare() {
    m_tokens.prepareToken();
    m_http.warm(m_origin.baseURL());
}

void TranscriptionClient::follow(const QString &path, const TranscriptionSettings &settings, Heard heard) {
    abandon();
    if (!m_origin.isThisMachine())
        return;
    m_live = std::make_shared<LiveUpload>(m_origin, m_http, m_limits, settings, path, std::move(heard));
    m_worker.start([this, live = m_live] { live->begin(senderOfUpload(m_tokens, m_preferences)); });
}

void TranscriptionClient::abandon() {
    if (const auto live = std::exchange(m_live, nullptr))
        live->abandon();
}

void TranscriptionClient::transcribe(const QString &path, const TranscriptionSettings &settings,
                                     Completion completion) {
    const OpenRecording file = openRecording(path);
    if (!file) {
        abandon();
        completion(failed(file.error()));
        return;
    }
    Upload upload{m_origin, m_http, m_limits, *file, settings, std::move(completion)};
    const auto live = std::exchange(m_live, nullptr);
    if (live && finishLive(*live, upload))
        return;
    if (live)
        live->abandon();
    m_worker.start([this, upload] { upload.send(senderOfUpload(m_tokens, m_preferences)); });
}

} // namespace velmo
