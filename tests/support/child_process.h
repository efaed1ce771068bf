#pragma once

#include "base/interface.h"

#include <QProcess>
#include <functional>
#include <sys/types.h>

namespace velmo::testing {

/// Has a program that is not started yet killed should the test end before it.
void endWithParent(QProcess &program);

/// kill(2). SIGSTOP is over when this returns: kill(2) itself comes back while the process still runs and answers.
void sendSignal(qint64 process, int number);

/// A process beside the test. Make it before the test starts threads of its own.
class ChildProcess : private Unmovable {
public:
    /// Runs the body in a copy of this process; its answer is the exit status.
    explicit ChildProcess(const std::function<int()> &body);
    ~ChildProcess();

    /// Waits for its end and answers the exit status, or minus the signal that ended it.
    int wait();

    /// Ends it as an unplugged computer would: no code of its own runs any more.
    void kill() const;

private:
    pid_t m_pid;
};

} // namespace velmo::testing
