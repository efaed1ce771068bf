#pragma once

#include "base/qt_main_queue.h"
#include "desks/window_desk.h"

#include <QSize>

namespace velmo::screenshots {

using testing::OtherPages;

/// The afternoon on which the pictures are taken.
class PictureClock final : public MainQueue {
public:
    void post(Task task) override { m_queue.post(std::move(task)); }
    [[nodiscard]] Timer after(std::chrono::milliseconds delay, Task task) override;
    [[nodiscard]] Date now() const override;
    [[nodiscard]] std::chrono::nanoseconds uptime() const override { return m_queue.uptime(); }

private:
    QtMainQueue m_queue;
};

/// The main window over somebody's texts.
class WindowSet : public testing::WindowDesk<PictureClock> {
public:
    enum class Contents { Filled, Empty, Overfull };

    WindowSet(QQmlEngine &engine, Contents contents, const OtherPages &pages = {});

    /// Shows the window; sizes in logical pixels.
    QQuickWindow &show(QSize size = QSize(900, 600));
};

} // namespace velmo::screenshots
