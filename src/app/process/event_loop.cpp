#include "app/process/event_loop.h"

#include <QEventLoop>

namespace velmo {

void awaitDone(const std::function<void(const Done &done)> &begin) {
    QEventLoop untilDone;
    bool isDone = false;
    begin([&] {
        isDone = true;
        untilDone.quit(); // which a loop that does not run yet forgets
    });
    if (!isDone)
        untilDone.exec();
}

} // namespace velmo
