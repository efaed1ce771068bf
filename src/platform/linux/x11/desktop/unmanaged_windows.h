#pragma once

#include "base/main_queue.h"
#include "platform/floating_windows.h"
#include "platform/linux/x11/server/desktop_watch.h"

#include <atomic>

namespace velmo::x11 {

/// Override-redirect windows. Requests about them go over the connection on which they were made, so that they come
/// after their making.
class UnmanagedWindows final : public FloatingWindows, private DesktopWatch::Observer {
public:
    /// @param windows the connection on which our windows are made; null when there are none on an X display.
    UnmanagedWindows(MainQueue &queue, std::shared_ptr<DesktopWatch> watch, xcb_connection_t *windows);
    ~UnmanagedWindows() override;

    [[nodiscard]] bool isComposited() const override { return m_isComposited; }
    [[nodiscard]] std::unique_ptr<Handle> watch(Events events) override;
    [[nodiscard]] QRect freeOf(QRect screen) const override;
    void setInputRegion(quint64 window, const QList<QRect> &region) override;
    [[nodiscard]] std::unique_ptr<KeyboardLoan> borrowKeyboard(quint64 window) override;

private:
    void compositorChanged() override;

    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
    xcb_connection_t *m_windows;
    std::atomic<bool> m_isComposited = false;
};

} // namespace velmo::x11
