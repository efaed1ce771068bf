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
constexpr auto kMessageTime = 4000ms;

} // namespace

FloatingBar::FloatingBar(const Collaborators &collaborators) : m_with(collaborators) {
    const RecordingManager &manager = m_with.recordingManager;
    connect(&manager, &RecordingManager::stateChanged, this, &FloatingBar::stateChanged);
    connect(&manager, &RecordingManager::activeAppNameChanged, this, &FloatingBar::initialChanged);
    connect(&manager, &RecordingManager::liveTextChanged, this, &FloatingBar::liveTextChanged);
    connect(&manager, &RecordingManager::errorMessageChanged, this,
            [this, &manager] { say(manager.errorMessage(), true); });
    connect(&manager, &RecordingManager::noticeChanged, this,
            [this, &manager] { say(manager.notice(), false); });
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
    return m_message.isEmpty() ? m_with.textInserter.notice() : m_message;
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

void FloatingBar::say(const QString &message, bool isWarning) {
    m_messageTimer.reset();
    m_message = message;
    m_isWarning = isWarning && !message.isEmpty();
    if (!message.isEmpty())
        m_messageTimer = m_with.queue.after(kMessageTime, [this] { say({}, false); });
    Q_EMIT messageChanged();
}

} // namespace velmo
