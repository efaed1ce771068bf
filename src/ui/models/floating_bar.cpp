#include "ui/models/floating_bar.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "dictation/capture/audio_level_provider.h"
#include "dictation/insertion/text_inserter.h"
#include "dictation/session/recording_manager.h"
#include "ui/models/trigger_key_name.h"

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Time to read a message twice; the popover goes on showing it (a product decision).
constexpr auto kErrorTime = 4000ms;

} // namespace

FloatingBar::FloatingBar(const Collaborators &collaborators) : m_with(collaborators) {
    const RecordingManager &manager = m_with.recordingManager;
    connect(&manager, &RecordingManager::stateChanged, this, &FloatingBar::stateChanged);
    connect(&manager, &RecordingManager::activeAppNameChanged, this, &FloatingBar::initialChanged);
    connect(&manager, &RecordingManager::liveTextChanged, this, &FloatingBar::liveTextChanged);
    connect(&m_with.levelMeter, &AudioLevelProvider::dotLevelsChanged, this, &FloatingBar::dotLevelsChanged);
    connect(&m_with.textInserter, &TextInserter::noticeChanged, this, &FloatingBar::messageChanged);
    connect(&m_with.triggerKeyName, &TriggerKeyName::changed, this, &FloatingBar::triggerKeyNameChanged);
}

bool FloatingBar::isIdle() const {
    return m_with.recordingManager.state() == State::idle;
}

bool FloatingBar::isTranscribing() const {
    return m_with.recordingManager.state() == State::transcribing;
}

QString FloatingBar::initial() const {
    return upperCased(firstCharacters(m_with.recordingManager.activeAppName(), 1));
}

const QList<double> &FloatingBar::dotLevels() const {
    return m_with.levelMeter.dotLevels();
}

const QString &FloatingBar::liveText() const {
    return m_with.recordingManager.liveText();
}

QString FloatingBar::triggerKeyName() const {
    return m_with.triggerKeyName.inText();
}

const QString &FloatingBar::message() const {
    return isWarning() ? m_error : m_with.textInserter.notice();
}

void FloatingBar::startRecording() {
    m_with.recordingManager.startRecording();
}

void FloatingBar::stopRecording() {
    m_with.recordingManager.stopRecording();
}

void FloatingBar::cancelRecording() {
    m_with.recordingManager.cancelRecording();
}

void FloatingBar::takeError() {
    m_errorTimer.reset();
    m_error = m_with.recordingManager.errorMessage();
    if (!m_error.isEmpty()) {
        m_errorTimer = m_with.queue.after(kErrorTime, [this] {
            m_error.clear();
            Q_EMIT messageChanged();
        });
    }
    Q_EMIT messageChanged();
}

} // namespace velmo
