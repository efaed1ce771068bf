#include "dictation/session/recording_manager.h"

#include "base/characters.h"
#include "base/log.h"
#include "dictation/capture/recorder.h"
#include "dictation/dictation_display.h"
#include "dictation/insertion/text_insertion.h"
#include "dictation/processing/text_processing.h"
#include "platform/microphone_permission.h"
#include "platform/sound_player.h"
#include "platform/workspace.h"
#include "service/wire/session_interfaces.h"
#include "store/dictation_history.h"
#include "store/languages.h"
#include "store/preference_keys.h"
#include "store/preferences.h"
#include "store/word_count.h"
#include "text/passes/hallucination_filter.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Shorter recordings are slips of the finger (a product decision).
constexpr double kShortestSeconds = 0.3;

/// How long "No speech detected" stays (a product decision).
constexpr auto kPhantomMessageTime = 2000ms;

/// The service client lets a connection go after 30 s of rest, so a long recording refreshes it before that.
constexpr auto kWarmInterval = 25s;

/// How much of a text goes into a log line.
constexpr qsizetype kLoggedCharacters = 80;

const QString kNoSpeech = u"No speech detected"_s;

/// Whole ones.
QString milliseconds(Date from, Date to) {
    return fixed(millisecondsBetween(from, to), 0);
}

/// `(12 chars, lang: no): "Hei på deg"`; `details` is what stands after the count.
QString textSummary(const QString &text, const QString &details) {
    return u"(%1 chars%2): \""_s.arg(QString::number(characterCount(text)), details) +
           firstCharacters(text, kLoggedCharacters).toString() + u'"';
}

} // namespace

RecordingManager::RecordingManager(const Collaborators &collaborators)
    : m_with(collaborators), m_hintPrompt(collaborators.preferences) {}

// Starting

void RecordingManager::startRecording() {
    if (m_state != State::idle) {
        log(LogTag::Flow, u"Can't start — state is "_s + nameOf(m_state));
        if (m_state != State::recording)
            Q_EMIT startFailed();
        return;
    }
    const auto status = m_with.microphone.status();
    if (status != MicrophonePermission::Status::NotAsked) {
        beginRecording(status == MicrophonePermission::Status::Granted);
        return;
    }
    m_with.microphone.request(
        onMain(m_with.queue, m_lifetime, [this](bool granted) { beginRecording(granted); }));
}

void RecordingManager::beginRecording(bool granted) {
    if (!granted) {
        failStart(u"Microphone access denied. Check System Settings > Privacy > Microphone."_s);
        return;
    }
    const QString app = m_with.workspace.frontmostApplicationName().value_or(QString());
    setActiveAppName(app.isEmpty() ? u"App"_s : app);

    const auto started = m_with.recorder.startRecording();
    if (started) {
        recordingStarted(*started);
        return;
    }
    const QString message = u"Failed to start recording: "_s + started.error().description;
    log(LogTag::Flow, message);
    failStart(message);
}

/// The recording may run all the same: by another start of this turn, which counts by then.
void RecordingManager::failStart(const QString &message) {
    m_with.queue.post(m_lifetime.guard([this, message] {
        setErrorMessage(message);
        if (m_state != State::recording)
            Q_EMIT startFailed();
    }));
}

void RecordingManager::recordingStarted(const QString &path) {
    m_recordingStartTime = m_with.queue.now();
    setState(State::recording);
    setErrorMessage({});
    setNotice({});
    log(LogTag::Flow, u"Recording started"_s);
    m_with.sounds.play(SoundCue::Tink);
    keepServiceWarm();
    followRecording(path);
}

void RecordingManager::followRecording(const QString &path) {
    Transcriber::Heard heard;
    if (m_with.preferences.boolean(keys::liveWords).value_or(true)) {
        heard = onMain(m_with.queue, m_lifetime, [this, path](const QString &text) {
            if (m_state == State::recording && path == m_recordingPath)
                setLiveText(text);
        });
    }
    m_recordingPath = path;
    m_with.transcriptionClient.follow(path, buildTranscriptionSettings(), std::move(heard));
}

void RecordingManager::keepServiceWarm() {
    m_with.transcriptionClient.prepare();
    m_warmTimer = m_with.queue.after(kWarmInterval, m_lifetime.guard([this] { keepServiceWarm(); }));
}

// Stopping

void RecordingManager::stopRecording() {
    if (m_state != State::recording) {
        log(LogTag::Flow, u"Can't stop — state is "_s + nameOf(m_state));
        return;
    }
    m_warmTimer.reset();
    const auto path = m_with.recorder.stopRecording();
    if (!path) {
        log(LogTag::Flow, u"No recording to stop"_s);
        m_with.transcriptionClient.abandon();
        setState(State::idle);
        return;
    }
    Dictation dictation;
    dictation.recording = *path;
    dictation.stopTime = m_with.queue.now();
    dictation.durationSeconds = secondsRecorded();
    log(LogTag::Flow, u"Recording stopped — duration: %1s"_s.arg(fixed(dictation.durationSeconds, 1)));
    m_with.sounds.play(SoundCue::Pop);
    if (dictation.durationSeconds < kShortestSeconds) {
        log(LogTag::Flow, u"Recording too short, discarding"_s);
        m_with.transcriptionClient.abandon();
        m_with.recorder.deleteRecording(*path);
        setState(State::idle);
        return;
    }
    setState(State::transcribing);
    transcribe(std::move(dictation));
}

double RecordingManager::secondsRecorded() const {
    return m_recordingStartTime ? secondsBetween(*m_recordingStartTime, m_with.queue.now()) : 0;
}

void RecordingManager::cancelRecording() {
    if (m_state != State::recording)
        return;
    m_warmTimer.reset();
    m_with.transcriptionClient.abandon();
    if (const auto path = m_with.recorder.stopRecording())
        m_with.recorder.deleteRecording(*path);
    log(LogTag::Flow, u"Recording cancelled by user"_s);
    m_with.sounds.play(SoundCue::Funk);
    setState(State::idle);
}

// From recording to text

/// For an answer that comes on another thread: handles it on the main thread, told the moment at which it came, so that
/// latency figures leave out the wait for the main queue.
template <class Handler>
auto RecordingManager::whenAnswered(Handler handle) {
    return [&queue = m_with.queue, handle = onMain(m_with.queue, m_lifetime, std::move(handle))](
               const auto &answer) { handle(queue.now(), answer); };
}

TranscriptionSettings RecordingManager::buildTranscriptionSettings() const {
    TranscriptionSettings settings;
    settings.language = primaryLanguage(m_with.preferences);
    settings.languages = selectedLanguagesText(m_with.preferences);
    settings.prompt = m_hintPrompt.current(languageCodes(settings.languages));
    return settings;
}

void RecordingManager::transcribe(Dictation dictation) {
    const TranscriptionSettings settings = buildTranscriptionSettings();
    dictation.prompt = settings.prompt;
    log(LogTag::Latency, u"Upload starting (+%1ms after stop)"_s.arg(sinceStop(dictation)));

    m_with.transcriptionClient.transcribe(
        dictation.recording, settings,
        whenAnswered([this, dictation](Date answered, const TranscriptionResult &result) {
            log(LogTag::Latency,
                u"Whisper complete (+%1ms after stop)"_s.arg(milliseconds(dictation.stopTime, answered)));
            m_with.recorder.deleteRecording(dictation.recording);
            handleTranscriptionResult(dictation, result);
        }));
}

void RecordingManager::handleTranscriptionResult(const Dictation &dictation,
                                                 const TranscriptionResult &result) {
    if (!result) {
        const QString description = result.error().localizedDescription();
        log(LogTag::Flow, u"❌ EXIT: Transcription failed: "_s + description);
        setErrorMessage(description);
        setState(State::idle);
        return;
    }
    const auto &[text, language] = *result;
    log(LogTag::Flow,
        u"Server returned text "_s + textSummary(text, u", lang: "_s + language.value_or(u"nil"_s)));

    const QString spoken = trimmed(text).toString();
    if (spoken.isEmpty()) {
        log(LogTag::Flow, u"❌ EXIT: Empty transcription"_s);
        setState(State::idle);
        return;
    }
    if (isPromptEcho(spoken, dictation.prompt)) {
        log(LogTag::Flow, u"❌ EXIT: Hallucination detected (raw), discarding"_s);
        rejectPhantom();
        return;
    }
    setErrorMessage({});
    process(dictation, spoken, language);
}

void RecordingManager::process(const Dictation &dictation, const QString &text,
                               const std::optional<QString> &language) {
    const Date postStart = m_with.queue.now();
    log(LogTag::Latency,
        u"Post-processing starting (+%1ms after stop)"_s.arg(milliseconds(dictation.stopTime, postStart)));
    m_with.textProcessor.process(
        text, language, whenAnswered([this, dictation, postStart](Date answered, const ProcessedText &final) {
            log(LogTag::Latency,
                u"Post-processing complete (+%1ms after stop, processing took %2ms)"_s.arg(
                    milliseconds(dictation.stopTime, answered), milliseconds(postStart, answered)));
            log(LogTag::Flow, u"Processed text "_s + textSummary(final.text, {}));
            finishDictation(dictation, final);
        }));
}

void RecordingManager::finishDictation(const Dictation &dictation, const ProcessedText &processed) {
    const auto &[text, lacksMode] = processed;
    if (isPromptEcho(text, dictation.prompt)) {
        log(LogTag::Flow, u"❌ EXIT: Hallucination detected (processed), discarding"_s);
        rejectPhantom();
        return;
    }
    if (text.isEmpty()) {
        log(LogTag::Flow, u"❌ EXIT: Empty transcription"_s);
        setState(State::idle);
        return;
    }
    deliver(dictation, text);
    if (lacksMode)
        setNotice(tr("Mode not applied"));
    setState(State::idle);
}

void RecordingManager::deliver(const Dictation &dictation, const QString &text) {
    setLastTranscription(text);
    m_with.textInserter.insert(text);
    log(LogTag::Flow, u"✅ Text inserted + stats updated — TOTAL: %1ms"_s.arg(sinceStop(dictation)));
    m_with.history.add(text, dictation.durationSeconds);
    const qsizetype words = countWords(text);
    if (words > 0 && m_with.account.isLoggedIn())
        m_with.statistics.incrementStats(words);
}

/// What came back is not what was said: says so for a while, unless another message takes its place.
void RecordingManager::rejectPhantom() {
    setLastTranscription({});
    setErrorMessage(kNoSpeech);
    setState(State::idle);
    m_phantomMessageTimer = m_with.queue.after(kPhantomMessageTime, m_lifetime.guard([this] {
        if (m_errorMessage == kNoSpeech)
            setErrorMessage({});
    }));
}

// Published state

void RecordingManager::setState(State state) {
    m_with.queue.post(m_lifetime.guard([this, state] { applyState(state); }));
}

void RecordingManager::applyState(State state) {
    if (m_state != state) {
        m_state = state;
        Q_EMIT stateChanged();
    }
    if (state == State::idle)
        setLiveText({});
    if (onStateChange)
        onStateChange(state);
    m_with.overlay.update(state);
    if (state == State::recording)
        m_with.levelMeter.startMonitoring();
    else
        m_with.levelMeter.stopMonitoring();
}

void RecordingManager::setErrorMessage(const QString &message) {
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

void RecordingManager::setLiveText(const QString &text) {
    if (m_liveText == text)
        return;
    m_liveText = text;
    Q_EMIT liveTextChanged();
}

void RecordingManager::setNotice(const QString &notice) {
    if (m_notice == notice)
        return;
    m_notice = notice;
    Q_EMIT noticeChanged();
}

void RecordingManager::setLastTranscription(const QString &text) {
    if (m_lastTranscription == text)
        return;
    m_lastTranscription = text;
    Q_EMIT lastTranscriptionChanged();
}

void RecordingManager::setActiveAppName(const QString &name) {
    if (m_activeAppName == name)
        return;
    m_activeAppName = name;
    Q_EMIT activeAppNameChanged();
}

QString RecordingManager::sinceStop(const Dictation &dictation) const {
    return milliseconds(dictation.stopTime, m_with.queue.now());
}

} // namespace velmo
