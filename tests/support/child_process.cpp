#include "support/child_process.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::testing {

ChildProcess::ChildProcess(const std::function<int()> &body) : m_pid(::fork()) {
    if (m_pid == 0)
        ::_exit(body());
}

ChildProcess::~ChildProcess() {
    if (m_pid > 0) {
        kill();
        wait();
    }
}

int ChildProcess::wait() {
    int status = 0;
    ::waitpid(m_pid, &status, 0);
    m_pid = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

void ChildProcess::kill() const {
    ::kill(m_pid, SIGKILL);
}

} // namespace velmo::testing
