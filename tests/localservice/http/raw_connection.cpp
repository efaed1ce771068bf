#include "localservice/http/raw_connection.h"

#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velmo::localservice::testing {

RawConnection::RawConnection(int port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
        ::shutdown(m_socket, SHUT_RDWR);
}

RawConnection::~RawConnection() {
    ::close(m_socket);
}

bool RawConnection::send(const QByteArray &bytes) {
    return ::send(m_socket, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) ==
           bytes.size();
}

bool RawConnection::waitForReply(std::chrono::milliseconds longest) {
    pollfd watched{m_socket, POLLIN, 0};
    return ::poll(&watched, 1, static_cast<int>(longest.count())) > 0;
}

QByteArray RawConnection::readAll() {
    QByteArray all;
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = ::recv(m_socket, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return all;
        all.append(buffer.data(), count);
    }
}

} // namespace velmo::localservice::testing
