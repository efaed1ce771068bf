#include "service/transcription/live_upload.h"

#include "base/json.h"
#include "service/transcription/multipart_body.h"
#include "service/wire/service_reply.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using std::chrono::seconds;

/// A question on this machine; a service that does not answer it by then is no help with this recording.
constexpr HttpLimits kAsking{seconds(2), std::nullopt};

/// The service answers when it has heard more, after two seconds in any case.
constexpr HttpLimits kAskingForWords{seconds(10), std::nullopt};
/// What answers sooner without anything new does not wait, and is not asked again.
constexpr std::chrono::milliseconds kShortestWait{200};

bool takesLiveUploads(const HttpOutcome &health) {
    const auto reply = objectOf(health);
    return reply && reply->value("liveUpload"_L1).toBool();
}

/// "Request Timeout", "Not Implemented" and "Service Unavailable" mean that the service did not look at the recording.
bool isAnswer(const HttpOutcome &outcome) {
    if (outcome)
        return outcome->status != 408 && outcome->status != 501 && outcome->status != 503;
    return outcome.error().kind != TransportFailure::Kind::Network;
}

} // namespace

void LiveUpload::begin(const RequestSender &sender) {
    m_sender = sender;
    m_http.send({"GET", m_origin.baseURL() + "/health"_L1, {}, std::nullopt, kAsking},
                [self = shared_from_this()](const HttpOutcome &outcome) {
                    if (takesLiveUploads(outcome))
                        self->send();
                    else
                        self->abandon();
                });
}

void LiveUpload::send() {
    m_boundary = newBoundary();
    auto file = std::make_unique<QFile>(m_path);
    const bool isOpen = file->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    HttpRequest request = serviceRequest(RequestKind::Transcription, m_origin, m_sender,
                                         {std::nullopt, multipartContentType(m_boundary)});
    request.limits = m_limits.value_or(request.limits);
    {
        const std::lock_guard lock(m_mutex);
        if (m_state != State::Asking || !isOpen) {
            m_state = State::Over;
            return;
        }
        m_body = std::make_shared<GrowingRecording>(liveBodyStart(m_boundary, m_path, m_settings),
                                                    std::move(file), liveBodyEnd(m_boundary));
        m_state = State::Sending;
        request.growingBody = m_body;
    }
    m_http.send(std::move(request),
                [self = shared_from_this()](const HttpOutcome &outcome) { self->ended(outcome); });
    if (m_heard)
        askForWords();
}

void LiveUpload::askForWords() {
    m_asked = std::chrono::steady_clock::now();
    const QString address = m_origin.baseURL() + u"/api/transcribe/words?upload=%1&known=%2"_s;
    m_http.send({"GET",
                 address.arg(QString::fromLatin1(m_boundary)).arg(m_words.size()),
                 {},
                 std::nullopt,
                 kAskingForWords},
                [self = shared_from_this()](const HttpOutcome &outcome) { self->wordsCame(outcome); });
}

void LiveUpload::wordsCame(const HttpOutcome &outcome) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_state != State::Sending)
            return;
    }
    const auto reply = objectOf(outcome);
    const auto text = reply ? json::string(*reply, "text"_L1) : std::nullopt;
    const bool isNew = text && *text != m_words;
    if (!text || (!isNew && std::chrono::steady_clock::now() - m_asked < kShortestWait))
        return;
    if (isNew) {
        m_words = *text;
        m_heard(m_words);
    }
    askForWords();
}

std::optional<qint64> LiveUpload::sizeIfSending(const QFile &recording,
                                                const TranscriptionSettings &settings) {
    const std::lock_guard lock(m_mutex);
    if (m_state != State::Sending || recording.fileName() != m_path || settings != m_settings)
        return std::nullopt;
    const QByteArray boundary = newBoundary();
    return liveBodyStart(boundary, m_path, settings).size() + recording.size() + liveBodyEnd(boundary).size();
}

bool LiveUpload::finish(Ending ending) {
    const std::lock_guard lock(m_mutex);
    if (m_state != State::Sending)
        return false;
    m_ending = std::move(ending);
    m_state = State::Finished;
    m_body->finish();
    m_http.lookForMore();
    return true;
}

void LiveUpload::abandon() {
    const std::lock_guard lock(m_mutex);
    if (m_state == State::Finished)
        return;
    m_state = State::Over;
    if (!m_body)
        return;
    m_body->abandon();
    m_http.lookForMore();
}

/// An answer that comes before the recording has ended cannot be about all of it.
void LiveUpload::ended(const HttpOutcome &outcome) {
    Ending ending;
    {
        const std::lock_guard lock(m_mutex);
        if (m_state == State::Finished)
            ending = std::exchange(m_ending, {});
        m_state = State::Over;
    }
    if (!ending.answered)
        return;
    if (isAnswer(outcome))
        ending.answered(outcome);
    else
        ending.broken(m_sender);
}

} // namespace velmo
