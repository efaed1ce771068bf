#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "dictation/dictation_state.h"
#include "platform/global_hotkey.h"

#include <QObject>
#include <functional>
#include <memory>

namespace velmo {

class AccessibilityPermission;
class EventTap;
class FnKeyInterceptor;
class KeyboardKeys;
class Preferences;

/// Turns presses of the trigger key into the two gestures. Holding the key records for as long as it is held
/// (push-to-talk); two quick taps start a recording that lasts until the next release (hands-free). The
/// fallback hot key Control+Shift+A toggles.
///
/// It only asks for recordings to start and stop; whoever carries that out tells it with `recordingBegan`
/// and `recordingEnded` of what came about in another way. Main thread; all times are on the clock of MainQueue::uptime.
class HotkeyListener final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isUsingFnHotkey READ isUsingFnHotkey NOTIFY isUsingFnHotkeyChanged)
    Q_PROPERTY(velmo::RecordingMode recordingMode READ recordingMode NOTIFY recordingModeChanged)

public:
    /// Whom the listener works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        Preferences &preferences;
        AccessibilityPermission &permission;
        EventTap &tap;
        GlobalHotkey &hotkey;
        const KeyboardKeys &keys;
    };

    explicit HotkeyListener(const Collaborators &collaborators);
    ~HotkeyListener() override;

    /// Begins to watch the trigger key if the permission is there and it is not watched already. Safe to call
    /// again and again.
    void setupFnKey();
    /// Watches the key that is chosen now instead of the one chosen when the watch began.
    void triggerKeyChanged();
    /// Leaves the trigger key to the windows until `resumeFnKey`, which watches the key that is chosen by then: so a
    /// person can choose one by pressing it. What is published stays meanwhile.
    void pauseFnKey();
    void resumeFnKey();
    /// Registers Control+Shift+A, once.
    void registerFallbackHotkey();
    /// Gives all keys back.
    void stopListening();

    void fnDown(std::chrono::nanoseconds time);
    void fnUp(std::chrono::nanoseconds time);
    /// Another key or a mouse button went down while the trigger key is held. Before push-to-talk has begun
    /// the press was part of a shortcut and is forgotten, a tap before it too. Once a recording runs it goes
    /// on.
    void combinationUsed();
    void toggleFromHotkey();

    /// A recording began. When no gesture asked for it, it is a hands-free one from here on: the trigger key and the
    /// hot key stop it too.
    void recordingBegan();

    /// A recording ended, or one that was asked for did not begin, by whatever way: the next press starts
    /// afresh. Does nothing when the gesture has ended already.
    void recordingEnded();

    [[nodiscard]] bool isUsingFnHotkey() const { return m_isUsingFnHotkey; }
    [[nodiscard]] RecordingMode recordingMode() const { return m_recordingMode; }

    std::function<void()> onStartRecording;
    std::function<void()> onStopRecording;
    std::function<void(bool granted)> onPermissionStatusChanged;

    /// Whether whoever is at the keyboard may be anybody: keys begin nothing then, what runs they can end. Absent: never.
    std::function<bool()> isSessionLocked;

    /// The trigger key went down and may become a gesture: time to open the microphone, so that words spoken
    /// with the press are not lost. Called again with the second press of a double tap.
    std::function<void(std::chrono::nanoseconds time)> onPress;
    /// Nothing of the presses since `onPress` is wanted any more: they were no gesture, or its recording is
    /// over.
    std::function<void()> onPressDropped;

Q_SIGNALS:
    void isUsingFnHotkeyChanged();
    void recordingModeChanged();

private:
    [[nodiscard]] bool mayBegin() const;
    void hotkeyPressed();
    void armPushToTalk();
    void beginPushToTalk();
    void tapped(std::chrono::nanoseconds time);
    void beginGesture();
    void endGesture();
    void dropPress();
    void setRecordingMode(RecordingMode mode);
    void setUsingFnHotkey(bool isUsing);

    Collaborators m_with;
    std::unique_ptr<GlobalHotkey::Registration> m_carbonHotkeyRef;
    bool m_isUsingFnHotkey = false;
    bool m_isFnKeyPaused = false;
    std::unique_ptr<FnKeyInterceptor> m_fnInterceptor;
    QString m_watchedKey; ///< By the interceptor.
    RecordingMode m_recordingMode = RecordingMode::none;
    bool m_fnIsDown = false;
    std::chrono::nanoseconds m_fnPressedAt{0};
    std::chrono::nanoseconds m_lastTapTime{0}; ///< 0 when no tap is pending.
    MainQueue::Timer m_pushToTalkTimer;
    MainQueue::Timer m_secondTapTimer; ///< Runs out when no second tap can come any more.
    bool m_isPressWanted = false;      ///< Between `onPress` and `onPressDropped`.
    Lifetime m_lifetime;
};

} // namespace velmo
