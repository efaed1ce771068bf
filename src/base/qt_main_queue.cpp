#include "base/qt_main_queue.h"

#include <QTimer>

namespace velmo {

namespace {

class QtDelayedTask final : public MainQueue::DelayedTask {
public:
    QtDelayedTask(std::chrono::milliseconds delay, MainQueue::Task task) {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([task = std::move(task)] {
            // The task may drop the handle that owns it, and with it this closure.
            const auto running = task;
            running();
        });
        m_timer.start(delay);
    }

private:
    QTimer m_timer;
};

} // namespace

void QtMainQueue::post(Task task) {
    QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
}

MainQueue::Timer QtMainQueue::after(std::chrono::milliseconds delay, Task task) {
    return std::make_unique<QtDelayedTask>(delay, std::move(task));
}

Date QtMainQueue::now() const {
    return std::chrono::system_clock::now();
}

std::chrono::nanoseconds QtMainQueue::uptime() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

} // namespace velmo
