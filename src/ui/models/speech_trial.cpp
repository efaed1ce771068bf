#include "ui/models/speech_trial.h"

#include "base/log.h"
#include "dictation/session/recording_manager.h"

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// From the text's going out to its standing in the field: a paste takes a few hundredths of a second.
constexpr auto kPasteTime = 1500ms;

} // namespace

SpeechTrial::SpeechTrial(MainQueue &queue, RecordingManager &manager) : m_queue(queue), m_manager(manager) {
    connect(&m_manager, &RecordingManager::stateChanged, this, &SpeechTrial::follow);
    connect(&m_manager, &RecordingManager::startFailed, this,
            [this] { setOutcome(m_manager.errorMessage(), true); });
}

bool SpeechTrial::isRecording() const {
    return m_manager.state() == State::recording;
}

bool SpeechTrial::isTranscribing() const {
    return m_manager.state() == State::transcribing;
}

void SpeechTrial::toggle() {
    if (isRecording())
        m_manager.stopRecording();
    else
        m_manager.startRecording();
}

void SpeechTrial::textArrived() {
    if (!m_stopped)
        return;
    const double seconds = secondsBetween(*m_stopped, m_queue.now());
    m_stopped.reset();
    m_patience.reset();
    setOutcome(tr("The text came %1 s after you stopped.").arg(fixed(seconds, 1)), false);
}

void SpeechTrial::follow() {
    switch (m_manager.state()) {
    case State::recording:
        m_stopped.reset();
        m_patience.reset();
        setOutcome({}, false);
        break;
    case State::transcribing:
        m_stopped = m_queue.now();
        break;
    case State::idle:
        if (m_stopped)
            awaitText();
        break;
    }
    Q_EMIT stateChanged();
}

void SpeechTrial::awaitText() {
    if (!m_manager.errorMessage().isEmpty()) {
        m_stopped.reset();
        setOutcome(m_manager.errorMessage(), true);
        return;
    }
    m_patience = m_queue.after(kPasteTime, [this] {
        m_stopped.reset();
        setOutcome(tr("No text came: nothing was heard, or it could not be pasted here."), true);
    });
}

void SpeechTrial::setOutcome(const QString &outcome, bool hasFailed) {
    m_outcome = outcome;
    m_hasFailed = hasFailed;
    Q_EMIT outcomeChanged();
}

} // namespace velmo
