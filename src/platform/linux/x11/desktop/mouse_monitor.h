#pragma once

#include "base/main_queue.h"
#include "platform/global_mouse_monitor.h"
#include "platform/linux/x11/server/desktop_watch.h"

namespace velmo::x11 {

/// Clicks by raw events: they arrive over every window and under grabs of others.
class MouseMonitor final : public GlobalMouseMonitor {
public:
    /// `watch` may be null: then nothing can be watched.
    MouseMonitor(MainQueue &queue, std::shared_ptr<DesktopWatch> watch)
        : m_queue(queue), m_watch(std::move(watch)) {}

    [[nodiscard]] std::unique_ptr<Watch> watch(Clicked clicked) override;

private:
    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
};

} // namespace velmo::x11
