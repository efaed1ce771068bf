#pragma once

#include "base/interface.h"
#include "base/lifetime.h"
#include "base/main_queue.h"
#include "platform/event_tap.h"

#include <QString>
#include <functional>

namespace velmo {

/// Recognises bare presses of the trigger key, those without any other modifier, in what the event tap sees,
/// reports them and keeps them from other applications.
///
/// Made, started, stopped and destroyed on the main thread. While it runs, `fnIsDown` belongs to the tap's
/// thread; the callbacks are tasks of the main queue and carry the event's own time (on the clock of
/// MainQueue::uptime), however late the main queue gets to them.
class FnKeyInterceptor : private Unmovable {
public:
    FnKeyInterceptor(EventTap &tap, MainQueue &queue, QString triggerKey);
    ~FnKeyInterceptor();

    /// @return whether the tap runs.
    [[nodiscard]] bool start();
    void stop();

    /// What the tap asks about each event. Waits for nobody: the keyboard waits for the answer.
    [[nodiscard]] TapAnswer handleEvent(const TapEvent &event);

    using KeyCallback = std::function<void(std::chrono::nanoseconds time)>;

    // Set before start.
    KeyCallback onFnDown;
    KeyCallback onFnUp;
    /// Another key or a mouse button went down while the bare trigger key was held.
    std::function<void()> onCombinationUsed;

private:
    [[nodiscard]] TapAnswer handleFlags(const TapEvent &event);
    void schedule(KeyCallback FnKeyInterceptor::*callback, std::chrono::nanoseconds time);
    void scheduleCombination();

    EventTap &m_tap;
    MainQueue &m_queue;
    QString m_triggerKey;
    bool m_fnIsDown = false;
    Lifetime m_lifetime;
};

} // namespace velmo
