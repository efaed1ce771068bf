#include "localservice/http/socket_stream.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <netdb.h>
#include <poll.h>
#include <span>
#include <sys/socket.h>
#include <unistd.h>

namespace velmo::localservice {

namespace {

void numericAddress(int (*ask)(int, sockaddr *, socklen_t *), int socket, std::string &ip, int &port) {
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    auto *const plain = reinterpret_cast<sockaddr *>(&address);
    std::array<char, NI_MAXHOST> host{};
    std::array<char, NI_MAXSERV> service{};
    if (ask(socket, plain, &length) != 0 ||
        getnameinfo(plain, length, host.data(), host.size(), service.data(), service.size(),
                    NI_NUMERICHOST | NI_NUMERICSERV) != 0)
        return;
    ip = host.data();
    std::from_chars(service.data(), service.data() + std::strlen(service.data()), port);
}

int millisecondsUntil(std::chrono::steady_clock::time_point until) {
    const auto left = until - std::chrono::steady_clock::now();
    const auto rounded = std::chrono::ceil<std::chrono::milliseconds>(left).count();
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(rounded, 0));
}

/// Waits until something can be done on one of them; false when the time is over.
bool waitForAny(std::span<pollfd> watched, std::chrono::steady_clock::time_point until) {
    for (;;) {
        const int ready = ::poll(watched.data(), watched.size(), millisecondsUntil(until));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

bool waitFor(int socket, short events, std::chrono::steady_clock::time_point until) {
    pollfd watched{socket, events, 0};
    return waitForAny({&watched, 1}, until);
}

} // namespace

SocketStream::SocketStream(int socket, const ConnectionLimits &limits, int stopEvent)
    : m_socket(socket),
      m_stopEvent(stopEvent),
      m_limits(limits),
      m_receiveUntil(Clock::now() + limits.receive) {}

SocketStream::~SocketStream() {
    if (::shutdown(m_socket, SHUT_WR) == 0)
        discardUntilClosed();
    ::close(m_socket);
}

void SocketStream::discardUntilClosed() {
    const auto until = Clock::now() + m_limits.linger;
    while (waitForInput(until)) {
        if (::recv(m_socket, m_buffer.data(), m_buffer.size(), MSG_DONTWAIT) <= 0)
            return;
    }
}

bool SocketStream::waitForInput(Clock::time_point until) {
    while (!m_isStopping) {
        std::array<pollfd, 2> watched = {pollfd{m_socket, POLLIN, 0}, pollfd{m_stopEvent, POLLIN, 0}};
        if (!waitForAny(watched, until))
            return false;
        if (watched[0].revents != 0)
            return true;
        noteStop();
    }
    return waitFor(m_socket, POLLIN, std::min(until, m_receiveUntil));
}

void SocketStream::noteStop() {
    m_isStopping = true;
    m_receiveUntil = std::min(m_receiveUntil, Clock::now() + m_limits.afterStop);
}

bool SocketStream::isClosedByClient() const {
    char next = 0;
    const ssize_t count = ::recv(m_socket, &next, sizeof next, MSG_PEEK | MSG_DONTWAIT);
    return count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
}

bool SocketStream::is_readable() const {
    return m_next < m_filled || waitFor(m_socket, POLLIN, Clock::now());
}

bool SocketStream::is_writable() const {
    return waitFor(m_socket, POLLOUT, Clock::now());
}

ssize_t SocketStream::read(char *into, size_t size) {
    if (m_next == m_filled) {
        const ssize_t count = fill();
        if (count <= 0)
            return count;
    }
    const size_t count = std::min(size, m_filled - m_next);
    std::copy_n(m_buffer.data() + m_next, count, into);
    m_next += count;
    return static_cast<ssize_t>(count);
}

ssize_t SocketStream::fill() {
    if (m_received > m_limits.bytes || !waitForInput(std::min(m_receiveUntil, Clock::now() + m_limits.idle)))
        return -1;
    const ssize_t count = ::recv(m_socket, m_buffer.data(), m_buffer.size(), MSG_DONTWAIT);
    m_next = 0;
    m_filled = count > 0 ? static_cast<size_t>(count) : 0;
    m_received += static_cast<qint64>(m_filled);
    return count;
}

ssize_t SocketStream::write(const char *bytes, size_t size) {
    if (m_sendUntil == Clock::time_point::max())
        m_sendUntil = Clock::now() + m_limits.send;
    size_t written = 0;
    while (written < size) {
        const ssize_t count = ::send(m_socket, bytes + written, size - written, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count > 0)
            written += static_cast<size_t>(count);
        else if (errno != EINTR && (errno != EAGAIN || !waitFor(m_socket, POLLOUT, m_sendUntil)))
            return -1;
    }
    return static_cast<ssize_t>(written);
}

void SocketStream::get_remote_ip_and_port(std::string &ip, int &port) const {
    numericAddress(::getpeername, m_socket, ip, port);
}

void SocketStream::get_local_ip_and_port(std::string &ip, int &port) const {
    numericAddress(::getsockname, m_socket, ip, port);
}

} // namespace velmo::localservice
