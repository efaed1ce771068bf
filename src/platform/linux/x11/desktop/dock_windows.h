#pragma once

#include "platform/desktop_panels.h"
#include "platform/linux/x11/server/desktop_watch.h"

namespace velmo::x11 {

/// Panels are windows of the type "dock" (Extended Window Manager Hints).
class DockWindows final : public DesktopPanels {
public:
    /// `watch` may be null: then there are none.
    explicit DockWindows(std::shared_ptr<DesktopWatch> watch) : m_watch(std::move(watch)) {}

    [[nodiscard]] QList<QRect> frames() const override;

private:
    std::shared_ptr<DesktopWatch> m_watch;
};

} // namespace velmo::x11
