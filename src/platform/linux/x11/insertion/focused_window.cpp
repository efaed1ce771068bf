#include "platform/linux/x11/insertion/focused_window.h"

#include "platform/linux/x11/server/properties.h"

namespace velmo::x11 {

void X11FocusedWindow::find(std::function<void(std::optional<FocusedWindow>)> done) {
    m_loop.post([this, done = onMain(m_queue, std::move(done))] { done(findNow()); });
}

std::optional<FocusedWindow> X11FocusedWindow::findNow() const {
    const xcb_window_t window = windowWithFocus();
    if (window == XCB_WINDOW_NONE)
        return std::nullopt;
    return FocusedWindow{m_connection.clientOf(window), classOf(window)};
}

xcb_window_t X11FocusedWindow::windowWithFocus() const {
    const xcb_window_t window = m_connection.windowWithKeyboard();
    return window == XCB_INPUT_FOCUS_POINTER_ROOT ? windowUnderPointer() : window;
}

/// The innermost one; without a window manager keys go there.
xcb_window_t X11FocusedWindow::windowUnderPointer() const {
    xcb_connection_t *xcb = m_connection.xcb();
    xcb_window_t found = XCB_WINDOW_NONE;
    for (xcb_window_t window = m_connection.root(); window != XCB_WINDOW_NONE;) {
        const Owned<xcb_query_pointer_reply_t> reply(
            xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, window), nullptr));
        window = reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
        if (window != XCB_WINDOW_NONE)
            found = window;
    }
    return found;
}

/// The focus may be on a part of the window; the class is on the whole.
QString X11FocusedWindow::classOf(xcb_window_t window) const {
    while (window != XCB_WINDOW_NONE && window != m_connection.root()) {
        const QString found = windowClassOf(m_connection, window).name;
        if (!found.isEmpty())
            return found;
        window = parentOf(window);
    }
    return {};
}

xcb_window_t X11FocusedWindow::parentOf(xcb_window_t window) const {
    xcb_connection_t *xcb = m_connection.xcb();
    const Owned<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
    return reply ? reply->parent : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace velmo::x11
