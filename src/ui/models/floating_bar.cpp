#include "ui/models/floating_bar.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "dictation/capture/audio_level_provider.h"
#include "dictation/gestures/trigger_key.h"
#include "dictation/insertion/text_inserter.h"
#include "dictation/session/recording_manager.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "ui/models/platform_texts.h"

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
    connect(&manager, &RecordingManager::errorMessageChanged, this, &FloatingBar::takeError);
    connect(&m_with.levelMeter, &AudioLevelProvider::dotLevelsChanged, this, &FloatingBar::dotLevelsChanged);
    connect(&m_with.textInserter, &TextInserter::noticeChanged, this, &FloatingBar::messageChanged);
    m_with.watch.follow(keys::triggerKey, this, [this] { Q_EMIT triggerKeyNameChanged(); });
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

QString FloatingBar::triggerKeyName() const {
    return platform_texts::withTriggerKey(u"Fn", triggerKeyLabel(triggerKey(m_with.preferences)));
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
