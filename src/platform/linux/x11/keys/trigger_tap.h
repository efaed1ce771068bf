#pragma once

#include "base/main_queue.h"
#include "platform/event_tap.h"
#include "platform/linux/x11/keys/key_guard_process.h"
#include "platform/linux/x11/keys/trigger_grab.h"
#include "platform/linux/x11/keys/trigger_state.h"
#include "platform/linux/x11/server/desktop_watch.h"

#include <optional>

namespace velmo::x11 {

/// The event tap of an X display.
///
/// What happens is read from raw events, which arrive whoever holds a grab, tell people's devices from
/// programs and know no auto-repeat. A synchronous grab beside them only decides who sees the key: a bare
/// press is swallowed, everything else is passed on, and with it whatever follows while the key is held, so
/// that combinations with the trigger key work as ever. Where the grab cannot be had, because another
/// application has the key or because no guard stands by that could free the keyboard, the key is only
/// observed, with a log line.
class TriggerTap final : public EventTap, private DesktopWatch::Observer {
public:
    struct Options {
        QString display;
        QString guardProgram;
    };

    /// `watch` may be null: then no tap can start.
    TriggerTap(MainQueue &queue, std::shared_ptr<DesktopWatch> watch, Options options);
    ~TriggerTap() override;

    [[nodiscard]] bool start(const QString &triggerKey, Handler handler) override;
    void stop() override;
    void enable() override;

private:
    // All of the rest runs in the watch's thread.
    [[nodiscard]] bool begin(const QString &triggerKey, Handler handler);
    void end();

    void inputMoved(const RawInput &input) override;
    void keyboardChanged() override;
    void devicesChanged() override;
    void triggerPressed(const RawInput &input);
    void triggerReleased(std::chrono::nanoseconds at);
    [[nodiscard]] KeyFlags othersHeld() const;
    void pollKey();

    void takeKey();
    [[nodiscard]] bool openGrab();
    void answerGrab();
    void answerAllTheServerAsked();
    void answer(const TriggerGrab::Question &question);
    void grabLost();
    void closeGrab();

    [[nodiscard]] bool startGuard();
    void hearGuard();
    void grabKey();
    void guardGone();
    void closeGuard();

    enum class GrabState { Unknown, Hidden, Taken, Unguarded };
    void setGrabState(GrabState state);
    void report(const QString &line);

    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
    Options m_options;

    QString m_key;
    xcb_keycode_t m_code = 0; ///< 0 when this keyboard has no such key.
    std::optional<TriggerState> m_state;
    Loop::Timer m_poll;
    std::unique_ptr<KeyGuardProcess> m_guard;
    std::unique_ptr<TriggerGrab> m_grab;
    GrabState m_grabState = GrabState::Unknown;
};

} // namespace velmo::x11
