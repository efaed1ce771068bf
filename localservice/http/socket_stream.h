#pragma once

#include <QtGlobal>
#include <array>
#include <chrono>
#include <httplib.h>
#include <string>

namespace velmo::localservice {

/// How long one connection may keep a thread busy with its bytes.
struct ConnectionLimits {
    std::chrono::milliseconds idle{5000};     ///< Without a byte of the request.
    std::chrono::milliseconds receive{20000}; ///< For the whole request, however its bytes trickle in.
    qint64 bytes = 1024LL * 1024;             ///< Of the whole request, its headers among them.
    std::chrono::milliseconds send{10000};    ///< For the whole reply.
    std::chrono::milliseconds linger{3000};   ///< For the client to close after the reply.
    std::chrono::milliseconds afterStop{500}; ///< For the rest of a request when the service stops.
};

/// The bytes of one connection that carries one request and one reply. The library's own streams limit each
/// single read, so a client that sends a byte now and then would never run out of time; this one limits the
/// whole. Used by one thread.
class SocketStream final : public httplib::Stream {
public:
    /// Takes the socket over. `stopEvent` is readable from when the service stops.
    SocketStream(int socket, const ConnectionLimits &limits, int stopEvent);
    SocketStream(const SocketStream &) = delete;
    SocketStream &operator=(const SocketStream &) = delete;
    /// Lets the client read the reply to its end, then closes: closing over unread bytes of a refused request
    /// would reset the connection and the reply with it.
    ~SocketStream() override;

    /// Whether the client has closed the connection, all its bytes having been read.
    [[nodiscard]] bool isClosedByClient() const;

    /// The request may take so long to arrive, from now on.
    void receiveFor(std::chrono::milliseconds duration) { m_receiveUntil = Clock::now() + duration; }

    [[nodiscard]] bool is_readable() const override;
    [[nodiscard]] bool is_writable() const override;
    ssize_t read(char *into, size_t size) override;
    ssize_t write(const char *bytes, size_t size) override;
    void get_remote_ip_and_port(std::string &ip, int &port) const override;
    void get_local_ip_and_port(std::string &ip, int &port) const override;
    [[nodiscard]] socket_t socket() const override { return m_socket; }

private:
    using Clock = std::chrono::steady_clock;

    ssize_t fill();
    [[nodiscard]] bool waitForInput(Clock::time_point until);
    void noteStop();
    void discardUntilClosed();

    int m_socket;
    int m_stopEvent;
    ConnectionLimits m_limits;
    Clock::time_point m_receiveUntil;
    Clock::time_point m_sendUntil = Clock::time_point::max();
    std::array<char, 16384> m_buffer; // read by the byte up to the end of the headers
    size_t m_next = 0;
    size_t m_filled = 0;
    qint64 m_received = 0;
    bool m_isStopping = false;
};

} // namespace velmo::localservice
