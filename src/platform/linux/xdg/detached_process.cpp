#include "platform/linux/xdg/detached_process.h"

#include "base/interface.h"

#include <QFile>
#include <QTimer>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace velmo {

namespace {

/// How the new process differs from us. We block the signals that end us, to end in order, and ignore a closed pipe;
/// programs started from here must not inherit that.
class SpawnSettings : private Unmovable {
public:
    SpawnSettings() {
        posix_spawnattr_init(&attributes);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        posix_spawnattr_setflags(&attributes,
                                 POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&files, STDIN_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&files, STDIN_FILENO, STDERR_FILENO);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&files);
        posix_spawnattr_destroy(&attributes);
    }

    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_t files{};
};

int spawn(const QString &program, const QStringList &arguments) {
    std::vector<QByteArray> words{QFile::encodeName(program)};
    for (const QString &argument : arguments)
        words.push_back(argument.toUtf8());
    std::vector<char *> pointers;
    pointers.reserve(words.size() + 1);
    for (QByteArray &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const SpawnSettings settings;
    pid_t process = -1;
    const int error = ::posix_spawnp(&process, pointers[0], &settings.files, &settings.attributes,
                                     pointers.data(), environ);
    return error == 0 ? process : -1;
}

/// A descriptor of the process; -1 where the kernel has none to give. The C library's own function is not declared for
/// C++ in Debian 12.
int openProcess(pid_t process) {
    return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

} // namespace

DetachedProcess::DetachedProcess(const QString &program, const QStringList &arguments, Finished finished)
    : m_process(spawn(program, arguments)),
      m_descriptor(m_process < 0 ? -1 : openProcess(m_process)),
      m_finished(std::move(finished)) {
    if (m_descriptor < 0) {
        tellSoon();
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] {
        m_notifier->setEnabled(false);
        tellSoon();
    });
}

DetachedProcess::~DetachedProcess() {
    m_notifier.reset();
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

/// In a later turn, where whoever is told may end this object.
void DetachedProcess::tellSoon() {
    QTimer::singleShot(0, &m_context, [this] {
        const auto finished = m_finished;
        finished(hasSucceeded());
    });
}

bool DetachedProcess::hasSucceeded() const {
    if (m_descriptor < 0)
        return m_process >= 0;
    siginfo_t end{};
    const bool hasEnded = ::waitid(P_PIDFD, static_cast<id_t>(m_descriptor), &end, WEXITED) == 0;
    return hasEnded && end.si_code == CLD_EXITED && end.si_status == 0;
}

} // namespace velmo
