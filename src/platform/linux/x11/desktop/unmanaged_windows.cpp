#include "platform/linux/x11/desktop/unmanaged_windows.h"

#include "base/lifetime.h"
#include "platform/linux/x11/desktop/struts.h"

#include <xcb/shape.h>

namespace velmo::x11 {

namespace {

/// Watches the desktop and hands what happens to the main thread.
class EventWatch final : public FloatingWindows::Handle, private DesktopWatch::Observer {
public:
    EventWatch(MainQueue &queue, std::shared_ptr<DesktopWatch> watch, FloatingWindows::Events events)
        : m_queue(queue), m_watch(std::move(watch)), m_events(std::move(events)) {
        m_watch->run([this] {
            m_activeWindow = m_watch->connection().atom("_NET_ACTIVE_WINDOW");
            m_stacking = m_watch->connection().atom("_NET_CLIENT_LIST_STACKING");
            m_workArea = m_watch->connection().atom("_NET_WORKAREA");
            m_watch->add(this);
        });
    }
    ~EventWatch() override {
        m_watch->run([this] { m_watch->remove(this); });
    }

private:
    void compositorChanged() override {
        m_queue.post(m_lifetime.guard([this] { m_events.compositionChanged(); }));
    }

    // Menus and screen lockers, unmanaged like ours, stay above: only what window managers do changes these.
    void rootPropertyChanged(xcb_atom_t property) override {
        if (property == m_activeWindow || property == m_stacking)
            m_queue.post(m_lifetime.guard([this] { m_events.restacked(); }));
        else if (property == m_workArea)
            m_queue.post(m_lifetime.guard([this] { m_events.panelsChanged(); }));
    }

    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
    FloatingWindows::Events m_events;
    xcb_atom_t m_activeWindow = XCB_ATOM_NONE;
    xcb_atom_t m_stacking = XCB_ATOM_NONE;
    xcb_atom_t m_workArea = XCB_ATOM_NONE; ///< Set anew for every change of a panel's room.
    Lifetime m_lifetime;
};

xcb_window_t windowWithKeyboard(xcb_connection_t *xcb) {
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

/// A window that is gone is no error worth a word.
void giveKeyboard(xcb_connection_t *xcb, xcb_window_t window) {
    const auto cookie =
        xcb_set_input_focus_checked(xcb, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    xcb_discard_reply(xcb, cookie.sequence);
    xcb_flush(xcb);
}

class FocusLoan final : public FloatingWindows::KeyboardLoan {
public:
    FocusLoan(xcb_connection_t *xcb, xcb_window_t window)
        : m_xcb(xcb), m_window(window), m_previous(windowWithKeyboard(xcb)) {
        giveKeyboard(m_xcb, m_window);
    }
    ~FocusLoan() override {
        if (isActive())
            giveKeyboard(m_xcb, m_previous);
    }
    [[nodiscard]] bool isActive() const override { return windowWithKeyboard(m_xcb) == m_window; }

private:
    xcb_connection_t *m_xcb;
    xcb_window_t m_window;
    xcb_window_t m_previous;
};

} // namespace

UnmanagedWindows::UnmanagedWindows(MainQueue &queue, std::shared_ptr<DesktopWatch> watch,
                                   xcb_connection_t *windows)
    : m_queue(queue), m_watch(std::move(watch)), m_windows(windows) {
    if (!m_watch)
        return;
    m_watch->run([this] {
        m_isComposited = m_watch->hasCompositor();
        m_watch->add(this);
    });
}

UnmanagedWindows::~UnmanagedWindows() {
    if (m_watch)
        m_watch->run([this] { m_watch->remove(this); });
}

std::unique_ptr<FloatingWindows::Handle> UnmanagedWindows::watch(Events events) {
    if (!m_watch)
        return nullptr;
    return std::make_unique<EventWatch>(m_queue, m_watch, std::move(events));
}

QRect UnmanagedWindows::freeOf(QRect screen) const {
    QRect free = screen;
    if (m_watch)
        m_watch->run([&] { free = x11::freeOf(m_watch->connection(), screen); });
    return free;
}

void UnmanagedWindows::setInputRegion(quint64 window, const QList<QRect> &region) {
    if (!m_windows)
        return;
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect &part : region) {
        rectangles.push_back({static_cast<int16_t>(part.x()), static_cast<int16_t>(part.y()),
                              static_cast<uint16_t>(part.width()), static_cast<uint16_t>(part.height())});
    }
    xcb_shape_rectangles(m_windows, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         static_cast<xcb_window_t>(window), 0, 0, static_cast<uint32_t>(rectangles.size()),
                         rectangles.data());
    xcb_flush(m_windows);
}

std::unique_ptr<FloatingWindows::KeyboardLoan> UnmanagedWindows::borrowKeyboard(quint64 window) {
    if (!m_windows)
        return nullptr;
    return std::make_unique<FocusLoan>(m_windows, static_cast<xcb_window_t>(window));
}

void UnmanagedWindows::compositorChanged() {
    m_isComposited = m_watch->hasCompositor();
}

} // namespace velmo::x11
