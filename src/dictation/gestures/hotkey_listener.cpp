#include "dictation/gestures/hotkey_listener.h"

#include "base/log.h"
#include "dictation/gestures/fn_key_interceptor.h"
#include "dictation/gestures/trigger_key.h"
#include "platform/accessibility_permission.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

// The figures of the gestures are product decisions.

/// How long the key must be held before push-to-talk begins; a shorter press is a tap.
constexpr std::chrono::nanoseconds kPushToTalkDelay = 300ms;

/// The releases of a double tap lie less than this apart,
constexpr std::chrono::nanoseconds kDoubleTapThreshold = 400ms;
/// and more than this: a bouncing contact is no tap.
constexpr std::chrono::nanoseconds kShortestTapGap = 50ms;

constexpr Hotkey kFallbackHotkey{'a', KeyFlag::Control | KeyFlag::Shift};

std::chrono::milliseconds remaining(std::chrono::nanoseconds due, std::chrono::nanoseconds now) {
    return std::chrono::ceil<std::chrono::milliseconds>(std::max(due - now, 0ns));
}

} // namespace

HotkeyListener::HotkeyListener(const Collaborators &collaborators) : m_with(collaborators) {}

HotkeyListener::~HotkeyListener() = default;

// Keys taken and given back

void HotkeyListener::setupFnKey() {
    if (m_fnInterceptor || m_isFnKeyPaused)
        return;
    if (!m_with.permission.isTrusted()) {
        log(LogTag::Hotkey, u"No Accessibility permission yet — Fn key unavailable"_s);
        return;
    }
    m_watchedKey = triggerKey(m_with.preferences, m_with.keys);
    auto interceptor = std::make_unique<FnKeyInterceptor>(m_with.tap, m_with.queue, m_watchedKey);
    interceptor->onFnDown = m_lifetime.guard([this](std::chrono::nanoseconds time) { fnDown(time); });
    interceptor->onFnUp = m_lifetime.guard([this](std::chrono::nanoseconds time) { fnUp(time); });
    interceptor->onCombinationUsed = m_lifetime.guard([this] { combinationUsed(); });
    if (!interceptor->start()) {
        log(LogTag::Hotkey, u"Failed to create Fn key event tap"_s);
        return;
    }
    m_fnInterceptor = std::move(interceptor);
    setUsingFnHotkey(true);
    if (onPermissionStatusChanged)
        onPermissionStatusChanged(true);
    log(LogTag::Hotkey, u"Fn key event tap active (in-process)"_s);
}

void HotkeyListener::triggerKeyChanged() {
    if (!m_fnInterceptor || m_watchedKey == triggerKey(m_with.preferences, m_with.keys))
        return;
    m_fnInterceptor.reset();
    setupFnKey();
    setUsingFnHotkey(m_fnInterceptor != nullptr);
}

void HotkeyListener::pauseFnKey() {
    m_isFnKeyPaused = true;
    m_fnInterceptor.reset();
    if (m_recordingMode == RecordingMode::none)
        combinationUsed(); // a press or tap so far leads to nothing
}

void HotkeyListener::resumeFnKey() {
    if (!std::exchange(m_isFnKeyPaused, false))
        return;
    setupFnKey();
    setUsingFnHotkey(m_fnInterceptor != nullptr);
}

void HotkeyListener::registerFallbackHotkey() {
    if (m_carbonHotkeyRef)
        return;
    auto registered = m_with.hotkey.registerHotkey(
        kFallbackHotkey, onMain(m_with.queue, m_lifetime, [this] { hotkeyPressed(); }));
    if (!registered) {
        log(LogTag::Hotkey, u"Failed to register Carbon hotkey: %1"_s.arg(registered.error()));
        return;
    }
    m_carbonHotkeyRef = std::move(*registered);
    log(LogTag::Hotkey, u"Fallback hotkey registered: Ctrl+Shift+A (toggle)"_s);
}

void HotkeyListener::stopListening() {
    m_isFnKeyPaused = false;
    m_fnInterceptor.reset();
    setUsingFnHotkey(false);
    m_carbonHotkeyRef.reset();
    m_pushToTalkTimer.reset();
    dropPress();
}

// Gestures

bool HotkeyListener::mayBegin() const {
    return !isSessionLocked || !isSessionLocked();
}

void HotkeyListener::fnDown(std::chrono::nanoseconds time) {
    if (m_recordingMode == RecordingMode::none && !mayBegin())
        return;
    m_fnIsDown = true;
    m_fnPressedAt = time;
    switch (m_recordingMode) {
    case RecordingMode::none:
        armPushToTalk();
        break;
    case RecordingMode::handsFree:
        log(LogTag::Hotkey, u"Fn pressed — will stop hands-free on release"_s);
        break;
    case RecordingMode::pushToTalk:
        break;
    }
}

void HotkeyListener::armPushToTalk() {
    m_secondTapTimer.reset();
    m_isPressWanted = true;
    if (onPress)
        onPress(m_fnPressedAt);
    m_pushToTalkTimer = m_with.queue.after(remaining(m_fnPressedAt + kPushToTalkDelay, m_with.queue.uptime()),
                                           m_lifetime.guard([this] { beginPushToTalk(); }));
}

void HotkeyListener::beginPushToTalk() {
    if (!m_fnIsDown || m_recordingMode != RecordingMode::none)
        return;
    setRecordingMode(RecordingMode::pushToTalk);
    log(LogTag::Hotkey, u"Push-to-talk started (held Fn)"_s);
    beginGesture();
}

void HotkeyListener::fnUp(std::chrono::nanoseconds time) {
    const bool wasDown = std::exchange(m_fnIsDown, false);
    m_pushToTalkTimer.reset();
    const auto held = time - m_fnPressedAt;
    switch (m_recordingMode) {
    case RecordingMode::handsFree:
        setRecordingMode(RecordingMode::none);
        log(LogTag::Hotkey, u"Hands-free stopped (tapped Fn)"_s);
        endGesture();
        break;
    case RecordingMode::pushToTalk:
        setRecordingMode(RecordingMode::none);
        log(LogTag::Hotkey, u"Push-to-talk stopped (released Fn after %1s)"_s.arg(
                                fixed(std::chrono::duration<double>(held).count(), 1)));
        endGesture();
        break;
    case RecordingMode::none:
        if (!wasDown) // the press was forgotten
            break;
        if (held < kPushToTalkDelay)
            tapped(time);
        else
            dropPress();
        break;
    }
}

void HotkeyListener::tapped(std::chrono::nanoseconds time) {
    const auto gap = time - m_lastTapTime;
    if (gap >= kDoubleTapThreshold || gap <= kShortestTapGap) {
        m_lastTapTime = time;
        m_secondTapTimer = m_with.queue.after(remaining(time + kDoubleTapThreshold, m_with.queue.uptime()),
                                              m_lifetime.guard([this] { dropPress(); }));
        return;
    }
    m_lastTapTime = 0ns;
    setRecordingMode(RecordingMode::handsFree);
    log(LogTag::Hotkey, u"Double-tap Fn → hands-free recording started"_s);
    beginGesture();
}

void HotkeyListener::combinationUsed() {
    if (m_recordingMode != RecordingMode::none)
        return;
    m_pushToTalkTimer.reset();
    m_fnIsDown = false;
    m_lastTapTime = 0ns;
    dropPress();
}

void HotkeyListener::hotkeyPressed() {
    if (m_recordingMode != RecordingMode::none || mayBegin())
        toggleFromHotkey();
}

void HotkeyListener::toggleFromHotkey() {
    if (m_recordingMode == RecordingMode::none) {
        setRecordingMode(RecordingMode::handsFree);
        beginGesture();
        return;
    }
    setRecordingMode(RecordingMode::none);
    endGesture();
}

void HotkeyListener::recordingBegan() {
    if (m_recordingMode == RecordingMode::none)
        setRecordingMode(RecordingMode::handsFree);
}

void HotkeyListener::recordingEnded() {
    if (m_recordingMode == RecordingMode::none)
        return;
    setRecordingMode(RecordingMode::none);
    m_fnIsDown = false;
    dropPress();
}

void HotkeyListener::beginGesture() {
    m_secondTapTimer.reset();
    if (onStartRecording)
        onStartRecording();
}

void HotkeyListener::endGesture() {
    if (onStopRecording)
        onStopRecording();
    dropPress();
}

void HotkeyListener::dropPress() {
    m_secondTapTimer.reset();
    if (!std::exchange(m_isPressWanted, false))
        return;
    if (onPressDropped)
        onPressDropped();
}

void HotkeyListener::setRecordingMode(RecordingMode mode) {
    if (std::exchange(m_recordingMode, mode) != mode)
        Q_EMIT recordingModeChanged();
}

void HotkeyListener::setUsingFnHotkey(bool isUsing) {
    if (std::exchange(m_isUsingFnHotkey, isUsing) != isUsing)
        Q_EMIT isUsingFnHotkeyChanged();
}

} // namespace velmo
