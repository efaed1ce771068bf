#include "platform/linux/x11/keys/key_guard_process.h"

#include <QFile>
#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::x11 {

using keyguard::Kind;
using keyguard::Message;

namespace {

/// Starts the program with the socket as its standard input and nothing else of ours, in a session of its
/// own: a terminal that stops us with Ctrl+Z leaves it running.
std::optional<pid_t> spawn(const QString &program, const QString &display, int socket) {
    QByteArray path = QFile::encodeName(program);
    QByteArray argument = display.toLocal8Bit();
    const std::array<char *, 3> arguments = {path.data(), argument.data(), nullptr};

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, socket, STDIN_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);

    pid_t process = 0;
    const int error = posix_spawn(&process, path.constData(), &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error == 0 ? std::optional(process) : std::nullopt;
}

} // namespace

std::unique_ptr<KeyGuardProcess> KeyGuardProcess::start(const QString &program, const QString &display) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return nullptr;
    const auto process = spawn(program, display, ends[1]);
    close(ends[1]);
    if (!process) {
        close(ends[0]);
        return nullptr;
    }
    return std::unique_ptr<KeyGuardProcess>(new KeyGuardProcess(ends[0], *process));
}

KeyGuardProcess::~KeyGuardProcess() {
    close(m_socket);
    kill(m_process, SIGKILL); // works on a stopped process too, so the wait is short
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR)
        ;
}

void KeyGuardProcess::watch(uint32_t keycode, uint32_t resource) {
    send(Message{Kind::Watch, keycode, resource});
}

KeyGuardProcess::News KeyGuardProcess::next() {
    for (;;) {
        Message message{};
        const ssize_t size = recv(m_socket, &message, sizeof message, MSG_DONTWAIT);
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            return News::None;
        if (size != sizeof message)
            return News::Gone;
        if (message.kind == Kind::Watching)
            return News::Watching;
        if (message.kind == Kind::Ping)
            return News::Question;
    }
}

void KeyGuardProcess::send(const Message &message) const {
    (void)::send(m_socket, &message, sizeof message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

} // namespace velmo::x11
