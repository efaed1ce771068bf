#include "dictation/capture/audio_recorder.h"

#include "base/log.h"
#include "dictation/capture/capture_session.h"
#include "dictation/capture/recording_paths.h"
#include "dictation/capture/recording_writer.h"
#include "platform/microphone.h"
#include "platform/recording_files.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// A press that nobody dropped is dropped then. Every gesture is decided within 0.7 s of its press, so this only
/// keeps a slip elsewhere from leaving the microphone open.
constexpr auto kLongestArmed = 2s;

/// A microphone that delivers nothing at all for so long is dead: silence, too, is delivered.
constexpr auto kLongestGap = 5s;

RecordingFailure failureOf(const QString &description) {
    return {description};
}

} // namespace

QString localizedDescription(RecordingError error) {
    switch (error) {
    case RecordingError::alreadyRecording:
        return u"Already recording"_s;
    case RecordingError::noMicrophoneAccess:
        return u"Microphone access denied"_s;
    }
    return {};
}

AudioRecorder::AudioRecorder(const Collaborators &collaborators, QString directory,
                             std::chrono::milliseconds patience)
    : m_with(collaborators), m_directory(std::move(directory)), m_patience(patience) {}

AudioRecorder::~AudioRecorder() {
    static_cast<void>(stopRecording());
    if (!m_recordingUrl.isEmpty())
        deleteRecording(m_recordingUrl); // of a dictation that did not come to its end
}

// Recording

Result<QString, RecordingFailure> AudioRecorder::startRecording() {
    if (m_isRecording)
        return failed(failureOf(localizedDescription(RecordingError::alreadyRecording)));
    auto session = takeOpenMicrophone();
    const auto format = session->awaitFormat(m_patience);
    if (!format)
        return failed(failureOf(format.error().description));
    const QString path = newRecordingPath(m_directory);
    auto writer = openFile(path, *format);
    if (!writer)
        return failed(writer.error());

    session->recordInto(std::move(*writer));
    m_session = std::move(session);
    m_recordingUrl = path;
    m_isRecording = true;
    watchMicrophone();
    log(LogTag::Recorder, u"Started recording to %1 (16kHz mono, input: %2Hz %3ch)"_s.arg(
                              QFileInfo(path).fileName(), QString::number(format->sampleRate),
                              QString::number(format->channels)));
    return path;
}

std::optional<QString> AudioRecorder::stopRecording() {
    if (!m_isRecording)
        return std::nullopt;
    m_watchTimer.reset();
    m_session.reset();
    m_isRecording = false;
    onAudioLevel = nullptr;
    log(LogTag::Recorder, u"Stopped — file size: %1 bytes"_s.arg(QFileInfo(m_recordingUrl).size()));
    return m_recordingUrl;
}

void AudioRecorder::deleteRecording(const QString &path) {
    m_with.files.remove(path);
}

Result<std::unique_ptr<RecordingWriter>, RecordingFailure>
AudioRecorder::openFile(const QString &path, const CaptureFormat &format) {
    auto file = m_with.files.create(path);
    if (!file)
        return failed(failureOf(file.error().description));
    auto report = onMain(m_with.queue, m_lifetime, [this](float level) { reportLevel(level); });
    auto writer = RecordingWriter::create(format, std::move(*file), std::move(report));
    if (!writer) {
        m_with.files.remove(path);
        return failed(failureOf(u"The format of the microphone is not supported."_s));
    }
    return writer;
}

void AudioRecorder::reportLevel(float level) {
    if (onAudioLevel)
        onAudioLevel(level);
}

// Listening ahead

void AudioRecorder::press(std::chrono::nanoseconds at) {
    if (m_isRecording)
        return;
    m_session = takeOpenMicrophone();
    m_session->keepFrom(at);
    m_dropTimer = m_with.queue.after(kLongestArmed, m_lifetime.guard([this] { drop(); }));
}

void AudioRecorder::drop() {
    if (m_isRecording)
        return;
    m_dropTimer.reset();
    m_session.reset();
}

std::unique_ptr<CaptureSession> AudioRecorder::openMicrophone() {
    return std::make_unique<CaptureSession>(
        m_with.queue, m_with.microphone, [this](const MicrophoneFailure &failure) { captureEnded(failure); });
}

/// The one a press has opened, if it still listens.
std::unique_ptr<CaptureSession> AudioRecorder::takeOpenMicrophone() {
    m_dropTimer.reset();
    auto armed = std::exchange(m_session, nullptr);
    return armed && !armed->hasEnded() ? std::move(armed) : openMicrophone();
}

// When the microphone goes away

void AudioRecorder::captureEnded(const MicrophoneFailure &failure) {
    if (m_isRecording)
        microphoneLost(failure.description);
    else
        drop();
}

void AudioRecorder::microphoneLost(const QString &reason) {
    m_watchTimer.reset();
    log(LogTag::Recorder, u"Microphone lost: "_s + reason);
    // One turn later: whoever has just started the recording may not have noted that yet.
    m_with.queue.post(m_lifetime.guard([this] {
        if (m_isRecording && onMicrophoneLost)
            onMicrophoneLost();
    }));
}

void AudioRecorder::watchMicrophone() {
    m_watchTimer = m_with.queue.after(kLongestGap, m_lifetime.guard([this] {
        if (m_session->takeSignOfLife())
            watchMicrophone();
        else
            microphoneLost(u"It delivers nothing."_s);
    }));
}

} // namespace velmo
