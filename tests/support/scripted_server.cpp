#include "support/scripted_server.h"

#include <QList>
#include <algorithm>
#include <array>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

sockaddr_in loopback(in_port_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

/// A socket bound to a free port of this machine.
int boundSocket() {
    const int bound = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(0);
    if (bound < 0 || bind(bound, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        throw std::runtime_error("no port on loopback");
    return bound;
}

QString originOf(int bound) {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    getsockname(bound, reinterpret_cast<sockaddr *>(&address), &length);
    return u"http://127.0.0.1:%1"_s.arg(ntohs(address.sin_port));
}

bool sendAll(int socket, const QByteArray &bytes) {
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(socket, bytes.constData() + sent, static_cast<size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += count;
    }
    return true;
}

/// Connecting to "nowhere" ends a connection with a reset; closing would too, but the number of a closed
/// socket may already be another's when the server cuts its connections.
void reset(int socket) {
    const sockaddr nowhere{AF_UNSPEC, {}};
    [[maybe_unused]] const int always = connect(socket, &nowhere, sizeof nowhere);
}

} // namespace

std::optional<QByteArray> ReceivedRequest::header(const QByteArray &name) const {
    for (const QByteArray &line : head.split('\n').sliced(1)) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.first(colon).compare(name, Qt::CaseInsensitive) == 0)
            return line.sliced(colon + 1).trimmed();
    }
    return std::nullopt;
}

Reaction reply(int status, const QByteArray &body, const QByteArray &contentType) {
    return {"HTTP/1.1 " + QByteArray::number(status) + " Scripted\r\nContent-Type: " + contentType +
            "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body};
}

/// One connection and the thread that serves it.
class ScriptedServer::Connection {
public:
    Connection(ScriptedServer &server, int socket, int number)
        : m_server(server), m_socket(socket), m_number(number), m_thread([this] { serve(); }) {}
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    ~Connection() {
        m_thread.join();
        close(m_socket);
    }

    void cut() const { shutdown(m_socket, SHUT_RDWR); }

private:
    void serve();
    [[nodiscard]] bool receive();
    [[nodiscard]] std::optional<ReceivedRequest> receiveHead();
    [[nodiscard]] bool receiveBody(ReceivedRequest &request);
    [[nodiscard]] std::optional<QByteArray> receiveLine();
    [[nodiscard]] std::optional<QByteArray> receiveBytes(qsizetype count);
    [[nodiscard]] bool write(const Reaction &reaction) const;
    void end(Reaction::Then then);

    ScriptedServer &m_server;
    const int m_socket;
    const int m_number;
    QByteArray m_received; ///< Not yet part of a request.
    std::thread m_thread;
};

void ScriptedServer::Connection::serve() {
    auto then = Reaction::Then::KeepAlive;
    while (then == Reaction::Then::KeepAlive) {
        auto request = receiveHead();
        if (!request)
            return;
        const Reaction reaction = m_server.reactionTo(request->path.split('?').first());
        if (reaction.reads == Reaction::Reads::All && !receiveBody(*request))
            return;
        m_server.remember(std::move(*request));
        if (!write(reaction))
            return;
        m_server.rememberReply();
        then = reaction.then;
    }
    end(then);
}

bool ScriptedServer::Connection::receive() {
    std::array<char, 65536> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const ssize_t count = recv(m_socket, buffer.data(), buffer.size(), 0);
    if (count <= 0)
        return false;
    m_received.append(buffer.data(), count);
    return true;
}

std::optional<ReceivedRequest> ScriptedServer::Connection::receiveHead() {
    qsizetype end = -1;
    while ((end = m_received.indexOf("\r\n\r\n")) < 0) {
        if (!receive())
            return std::nullopt;
    }
    ReceivedRequest request;
    request.connection = m_number;
    request.head = m_received.first(end + 2);
    m_received.remove(0, end + 4);
    const auto words = request.head.split(' ');
    request.method = words.value(0);
    request.path = words.value(1);
    return request;
}

bool ScriptedServer::Connection::receiveBody(ReceivedRequest &request) {
    if (request.header("Transfer-Encoding") != "chunked") {
        const auto body = receiveBytes(request.header("Content-Length").value_or("0").toLongLong());
        request.body = body.value_or(QByteArray());
        return body.has_value();
    }
    for (qsizetype size = 1; size > 0;) {
        const auto line = receiveLine();
        size = line ? line->toLongLong(nullptr, 16) : 0;
        const auto chunk = line ? receiveBytes(size + 2) : std::nullopt;
        if (!chunk)
            return false;
        request.body += chunk->chopped(2);
    }
    return true;
}

std::optional<QByteArray> ScriptedServer::Connection::receiveLine() {
    qsizetype end = -1;
    while ((end = m_received.indexOf("\r\n")) < 0) {
        if (!receive())
            return std::nullopt;
    }
    return receiveBytes(end + 2)->chopped(2);
}

std::optional<QByteArray> ScriptedServer::Connection::receiveBytes(qsizetype count) {
    while (m_received.size() < count) {
        if (!receive())
            return std::nullopt;
    }
    QByteArray bytes = m_received.first(count);
    m_received.remove(0, count);
    return bytes;
}

bool ScriptedServer::Connection::write(const Reaction &reaction) const {
    if (reaction.pace.count() == 0)
        return sendAll(m_socket, reaction.bytes);
    return std::all_of(reaction.bytes.begin(), reaction.bytes.end(), [&](char byte) {
        return m_server.pause(reaction.pace) && sendAll(m_socket, QByteArray(1, byte));
    });
}

void ScriptedServer::Connection::end(Reaction::Then then) {
    if (then == Reaction::Then::Hold) {
        while (receive())
            m_received.clear();
        return;
    }
    if (then == Reaction::Then::Reset)
        reset(m_socket);
    else if (then == Reaction::Then::Close)
        shutdown(m_socket, SHUT_WR);
}

ScriptedServer::ScriptedServer() : m_listener(boundSocket()) {
    listen(m_listener, SOMAXCONN);
    m_acceptor = std::thread([this] { acceptAll(); });
}

ScriptedServer::~ScriptedServer() {
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
        m_changed.notify_all();
    }
    shutdown(m_listener, SHUT_RDWR);
    m_acceptor.join();
    close(m_listener);
    for (const Connection &connection : m_connections)
        connection.cut();
}

QString ScriptedServer::origin() const {
    return originOf(m_listener);
}

void ScriptedServer::answer(const QByteArray &path, int status, const QByteArray &body) {
    react(path, {reply(status, body)});
}

void ScriptedServer::react(const QByteArray &path, std::deque<Reaction> reactions) {
    const std::lock_guard lock(m_mutex);
    m_reactions[path] = std::move(reactions);
}

std::vector<ReceivedRequest> ScriptedServer::requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

int ScriptedServer::connections() const {
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(m_connections.size());
}

void ScriptedServer::waitForConnections(std::size_t count) const {
    waitUntil([&] { return m_connections.size() >= count; });
}

void ScriptedServer::waitForRequests(std::size_t count) const {
    waitUntil([&] { return m_requests.size() >= count; });
}

void ScriptedServer::waitForReplies(std::size_t count) const {
    waitUntil([&] { return m_replies >= count; });
}

void ScriptedServer::waitUntil(const std::function<bool()> &holds) const {
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, std::chrono::minutes(1), holds))
        throw std::runtime_error("the requests did not come");
}

QString ScriptedServer::refusingOrigin() {
    static const int bound = boundSocket(); // keeps others from listening there
    return originOf(bound);
}

void ScriptedServer::acceptAll() {
    for (;;) {
        const int socket = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            return;
        const std::lock_guard lock(m_mutex);
        m_connections.emplace_back(*this, socket, static_cast<int>(m_connections.size()));
        m_changed.notify_all();
    }
}

Reaction ScriptedServer::reactionTo(const QByteArray &path) {
    const std::lock_guard lock(m_mutex);
    std::deque<Reaction> &reactions = m_reactions[path];
    if (reactions.empty())
        return reply(404, "{}");
    Reaction next = reactions.front();
    if (reactions.size() > 1)
        reactions.pop_front();
    return next;
}

void ScriptedServer::remember(ReceivedRequest request) {
    const std::lock_guard lock(m_mutex);
    m_requests.push_back(std::move(request));
    m_changed.notify_all();
}

void ScriptedServer::rememberReply() {
    const std::lock_guard lock(m_mutex);
    ++m_replies;
    m_changed.notify_all();
}

bool ScriptedServer::pause(std::chrono::milliseconds duration) {
    std::unique_lock lock(m_mutex);
    return !m_changed.wait_for(lock, duration, [this] { return m_ending; });
}

} // namespace velmo::testing
