#pragma once

#include "base/main_queue.h"

#include <QObject>

namespace velmo {

/// The main queue of a Qt application: tasks run in the event loop of the thread that creates it (the main
/// thread).
class QtMainQueue final : public QObject, public MainQueue {
    Q_OBJECT
public:
    void post(Task task) override;
    [[nodiscard]] Timer after(std::chrono::milliseconds delay, Task task) override;
    [[nodiscard]] Date now() const override;
    [[nodiscard]] std::chrono::nanoseconds uptime() const override;
};

} // namespace velmo
