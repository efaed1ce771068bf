#pragma once

#include "base/interface.h"

#include <QSocketNotifier>
#include <functional>

namespace velmo {

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into a call in the event loop, so that it ends
/// in order. Made before any thread is started: threads inherit that the signals are not for them. Main thread.
class TerminationSignals : private Unmovable {
public:
    /// Keeps the signals from this thread and those it starts from now on; making an object does so too.
    static void block();

    TerminationSignals();
    ~TerminationSignals();

    std::function<void()> onTerminate;

private:
    int m_descriptor;
    QSocketNotifier m_notifier;
};

} // namespace velmo
