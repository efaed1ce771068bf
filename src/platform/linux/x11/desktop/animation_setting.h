#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "platform/linux/x11/server/desktop_watch.h"
#include "platform/motion_preference.h"

#include <atomic>

namespace velmo::x11 {

/// The setting "Gtk/EnableAnimations" that desktops publish on the display.
class AnimationSetting final : public MotionPreference, private DesktopWatch::Observer {
public:
    /// `watch` may be null: then nothing is asked for.
    AnimationSetting(MainQueue &queue, std::shared_ptr<DesktopWatch> watch);
    ~AnimationSetting() override;

    [[nodiscard]] bool isReduced() const override { return m_isReduced; }
    void setChangeHandler(std::function<void()> changed) override { m_changed = std::move(changed); }

private:
    void settingsChanged() override;

    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
    std::function<void()> m_changed; ///< Main thread.
    std::atomic<bool> m_isReduced = false;
    Lifetime m_lifetime;
};

} // namespace velmo::x11
