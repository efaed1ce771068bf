#pragma once

#include "base/interface.h"
#include "platform/linux/x11/keys/key_guard_protocol.h"

#include <QString>
#include <memory>
#include <sys/types.h>

namespace velmo::x11 {

/// The helper program that frees the keyboard when this process cannot (key_guard_main.cpp says why and how).
/// It ends with this object and with this process. Nothing here waits for it.
class KeyGuardProcess : private Unmovable {
public:
    /// Nothing when the program cannot be started.
    [[nodiscard]] static std::unique_ptr<KeyGuardProcess> start(const QString &program,
                                                                const QString &display);

    ~KeyGuardProcess();

    /// Readable when the guard has said something.
    [[nodiscard]] int descriptor() const { return m_socket; }

    /// Asks it to guard a grab of that key by the client that owns the resource. Its answer is `Watching`.
    void watch(uint32_t keycode, uint32_t resource);

    enum class News {
        None,
        Watching, ///< The key may be grabbed.
        Question, ///< Does the server wait for us? To be answered by `answer` once it does not.
        Gone,     ///< The guard has ended; nothing may stay grabbed.
    };
    /// Takes what the guard has said. To be called until it says None.
    [[nodiscard]] News next();

    /// The server no longer waits for us. Said too early, a process that is stopped right after it would leave the
    /// keyboard frozen: the guard hears of no key while the server holds them back.
    void answer() const { send({keyguard::Kind::Pong}); }

private:
    KeyGuardProcess(int socket, pid_t process) : m_socket(socket), m_process(process) {}
    void send(const keyguard::Message &message) const;

    int m_socket;
    pid_t m_process;
};

} // namespace velmo::x11
