#pragma once

#include "base/main_queue.h"
#include "platform/focused_window.h"
#include "platform/linux/x11/server/loop.h"

namespace velmo::x11 {

/// The window with the input focus of the X server. The loop has to end before it does.
class X11FocusedWindow final : public FocusedWindowFinder {
public:
    X11FocusedWindow(MainQueue &queue, Connection &connection, Loop &loop)
        : m_queue(queue), m_connection(connection), m_loop(loop) {}

    void find(std::function<void(std::optional<FocusedWindow>)> done) override;

private:
    [[nodiscard]] std::optional<FocusedWindow> findNow() const;
    [[nodiscard]] xcb_window_t windowWithFocus() const;
    [[nodiscard]] xcb_window_t windowUnderPointer() const;
    [[nodiscard]] QString classOf(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t parentOf(xcb_window_t window) const;

    MainQueue &m_queue;
    Connection &m_connection;
    Loop &m_loop;
};

} // namespace velmo::x11
