#include "dictation/session/dictation_controls.h"

#include "dictation/capture/recorder.h"
#include "dictation/gestures/hotkey_listener.h"
#include "dictation/session/recording_manager.h"
#include "platform/session_lock.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"

using namespace Qt::StringLiterals;

namespace velmo {

DictationControls::DictationControls(const Collaborators &collaborators) : m_with(collaborators) {
    connectListener();
    connectManager();
    heedLock();
    followTriggerKey();
    m_with.recorder.onMicrophoneLost = m_lifetime.guard([this] { m_with.recordingManager.stopRecording(); });
}

void DictationControls::startListening() {
    m_with.hotkeyListener.setupFnKey();
    m_with.hotkeyListener.registerFallbackHotkey();
}

void DictationControls::stopListening() {
    m_with.hotkeyListener.stopListening();
}

// What is joined

void DictationControls::connectListener() {
    HotkeyListener &listener = m_with.hotkeyListener;
    listener.onStartRecording = m_lifetime.guard([this] { m_with.recordingManager.startRecording(); });
    listener.onStopRecording = m_lifetime.guard([this] { m_with.recordingManager.stopRecording(); });
    listener.onPress =
        m_lifetime.guard([this](std::chrono::nanoseconds at) { m_with.armedCapture.press(at); });
    listener.onPressDropped = m_lifetime.guard([this] { m_with.armedCapture.drop(); });
}

/// However a recording begins, the trigger stops it; however it ends or fails to begin, the next press works at once.
void DictationControls::connectManager() {
    const RecordingManager &manager = m_with.recordingManager;
    connect(&manager, &RecordingManager::stateChanged, this, [this] {
        if (state() == State::recording)
            m_with.hotkeyListener.recordingBegan();
        else
            m_with.hotkeyListener.recordingEnded();
        answerStarts({});
    });
    connect(&manager, &RecordingManager::startFailed, this, [this] {
        m_with.hotkeyListener.recordingEnded();
        answerStarts(failed(QString(m_with.recordingManager.errorMessage())));
    });
}

void DictationControls::heedLock() {
    m_with.hotkeyListener.isSessionLocked = [&lock = m_with.sessionLock] { return lock.isLocked(); };
    m_with.sessionLock.onLocked = m_lifetime.guard([this] {
        if (state() == State::recording)
            m_with.recordingManager.stopRecording();
    });
}

void DictationControls::followTriggerKey() {
    m_with.preferenceWatch.follow(keys::triggerKey, this,
                                  [this] { m_with.hotkeyListener.triggerKeyChanged(); });
}

// What is asked for

void DictationControls::start(Answer answer) {
    begin(std::move(answer), [this] { m_with.recordingManager.startRecording(); });
}

void DictationControls::toggle(const Answer &answer) {
    HotkeyListener &listener = m_with.hotkeyListener;
    if (listener.recordingMode() == RecordingMode::none) {
        begin(answer, [&listener] { listener.toggleFromHotkey(); });
        return;
    }
    listener.toggleFromHotkey();
    answer({});
}

void DictationControls::begin(Answer answer, const std::function<void()> &startRecording) {
    if (state() != State::idle) {
        answer(failed(u"A dictation is under way already."_s));
        return;
    }
    m_starts.push_back(std::move(answer));
    startRecording();
}

void DictationControls::answerStarts(const Outcome &outcome) {
    for (const Answer &answer : std::exchange(m_starts, {}))
        answer(outcome);
}

DictationControls::Outcome DictationControls::stop() {
    if (state() != State::recording)
        return failed(u"No recording runs."_s);
    m_with.recordingManager.stopRecording();
    return {};
}

DictationControls::Outcome DictationControls::cancel() {
    if (state() != State::recording)
        return failed(u"No recording runs."_s);
    m_with.recordingManager.cancelRecording();
    return {};
}

State DictationControls::state() const {
    return m_with.recordingManager.state();
}

} // namespace velmo
