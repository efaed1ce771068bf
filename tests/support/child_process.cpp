#include "support/child_process.h"

#include "support/wait_until.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

/// Whether every thread of it stands still.
bool isStopped(qint64 process) {
    const QDir threads(u"/proc/%1/task"_s.arg(process));
    const QStringList names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return !names.isEmpty() && std::all_of(names.begin(), names.end(), [&threads](const QString &thread) {
        QFile file(threads.filePath(thread + u"/stat"_s)); // number (name) state …
        return file.open(QFile::ReadOnly) && file.readAll().contains(") T ");
    });
}

} // namespace

void endWithParent(QProcess &program) {
    program.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

void sendSignal(qint64 process, int number) {
    ::kill(static_cast<pid_t>(process), number);
    if (number == SIGSTOP) {
        EXPECT_TRUE(waitUntil([process] { return isStopped(process); })) << "the process goes on";
    }
}

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
