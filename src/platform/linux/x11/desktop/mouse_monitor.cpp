#include "platform/linux/x11/desktop/mouse_monitor.h"

#include "base/lifetime.h"

namespace velmo::x11 {

namespace {

constexpr uint32_t kLeftButton = 1;
constexpr uint32_t kRightButton = 3;

class MouseWatch final : public GlobalMouseMonitor::Watch, private DesktopWatch::Observer {
public:
    MouseWatch(MainQueue &queue, std::shared_ptr<DesktopWatch> watch, GlobalMouseMonitor::Clicked clicked)
        : m_queue(queue), m_watch(std::move(watch)), m_clicked(std::move(clicked)) {
        m_watch->run([this] { m_watch->add(this); });
    }
    ~MouseWatch() override {
        m_watch->run([this] { m_watch->remove(this); });
    }

private:
    void inputMoved(const RawInput &input) override {
        if (input.kind != RawInput::Kind::ButtonPress ||
            (input.detail != kLeftButton && input.detail != kRightButton))
            return;
        const Connection &connection = m_watch->connection();
        const Owned<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
            connection.xcb(), xcb_query_pointer(connection.xcb(), connection.root()), nullptr));
        if (!pointer)
            return;
        m_queue.post(m_lifetime.guard(
            [this, position = QPoint(pointer->root_x, pointer->root_y)] { m_clicked(position); }));
    }

    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
    GlobalMouseMonitor::Clicked m_clicked;
    Lifetime m_lifetime;
};

} // namespace

std::unique_ptr<GlobalMouseMonitor::Watch> MouseMonitor::watch(Clicked clicked) {
    if (!m_watch)
        return nullptr;
    return std::make_unique<MouseWatch>(m_queue, m_watch, std::move(clicked));
}

} // namespace velmo::x11
