#include "localservice/http/server.h"

#include "base/json.h"
#include "localservice/http/connection_threads.h"
#include "localservice/http/request_checks.h"
#include "localservice/http/this_machine.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using Clock = std::chrono::steady_clock;

// The library takes multipart bodies apart itself, leniently and without their order, and leaves every other
// body as it came. So until the body has been read the type goes under this name.
constexpr auto kSetAsideContentType = "Velmo-Set-Aside-Content-Type";

constexpr qint64 kRoomForHeaders = 1024LL * 1024;

ServerLimits withRoomForHeaders(ServerLimits limits) {
    limits.connection.bytes = limits.body + kRoomForHeaders;
    return limits;
}

/// When this thread's exchange began, and on which connection; a thread serves one at a time.
thread_local Clock::time_point t_began;
thread_local SocketStream *t_stream = nullptr;

void reuseAddress(socket_t socket) {
    // By default the library shares the port with whoever listens there already (SO_REUSEPORT), and requests
    // would go to either.
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

/// What the library would do in its own way is taken out of its sight before it looks at the request.
void prepare(httplib::Request &request) {
    request.headers.erase(kSetAsideContentType);
    const std::string type = request.get_header_value("Content-Type");
    request.headers.erase("Content-Type");
    if (!type.empty())
        request.set_header(kSetAsideContentType, type);
    // A request with neither has no body (RFC 9112, 6.3); the library would read on until the client closes.
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding"))
        request.set_header("Content-Length", "0");
    request.ranges.clear();
}

void write(httplib::Response &response, const Reply &reply) {
    response.status = reply.status;
    // What is answered is one person's, and means what it is declared to be.
    response.set_header("Cache-Control", "no-store");
    response.set_header("X-Content-Type-Options", "nosniff");
    for (const auto &[name, value] : reply.headers)
        response.set_header(name.toStdString(), value.toStdString());
    if (reply.page.isEmpty())
        response.set_content(json::compact(reply.body).toStdString(), "application/json");
    else
        response.set_content(reply.page.toStdString(), "text/html; charset=utf-8");
}

QByteArray queryOf(const std::string &target) {
    const size_t mark = target.find('?');
    return mark == std::string::npos ? QByteArray() : QByteArray::fromStdString(target.substr(mark + 1));
}

Request requestFrom(const httplib::Request &request, QByteArray body) {
    Request taken;
    taken.body = std::move(body);
    taken.query = queryOf(request.target);
    taken.isFromLoopback = isLoopbackAddress(request.remote_addr);
    taken.isAbandoned = [stream = t_stream] { return stream->isClosedByClient(); };
    for (const auto &[name, value] : request.headers) {
        const bool isSetAside = name == kSetAsideContentType;
        taken.headers.emplace_back(isSetAside ? QByteArray("Content-Type") : QByteArray::fromStdString(name),
                                   QByteArray::fromStdString(value));
    }
    return taken;
}

QString bindFailure(const QString &address, int port, int error) {
    const QString place = u"port %1 of %2"_s.arg(QString::number(port), address);
    if (error == EADDRINUSE)
        return u"Another program listens on %1 already, perhaps another velmo-local-service. "
               "Stop it, or choose another port with --port."_s.arg(place);
    return u"Could not listen on %1: %2."_s.arg(place, qt_error_string(error));
}

} // namespace

class Server::Http final : public httplib::Server {
public:
    explicit Http(const ServerLimits &limits);
    Http(const Http &) = delete;
    Http &operator=(const Http &) = delete;
    ~Http() override { ::close(m_stopEvent); }

    void add(const Endpoint &endpoint);
    void extendBacklog() { ::listen(svr_sock_, SOMAXCONN); }
    void interrupt();

private:
    bool process_and_close_socket(socket_t socket) override;

    [[nodiscard]] std::optional<Refusal> refusalFor(const httplib::Request &request,
                                                    httplib::Response &response) const;
    /// The methods that the path takes; none when there is nothing at it.
    [[nodiscard]] QByteArrayList methodsOf(const std::string &path) const;
    [[nodiscard]] bool isPolled(const std::string &path) const;
    void answer(const Endpoint &endpoint, const httplib::Request &request, httplib::Response &response,
                const httplib::ContentReader &readBody) const;
    static void answerWhileItComes(const Endpoint &endpoint, const httplib::Request &request,
                                   httplib::Response &response, const httplib::ContentReader &readBody);
    void logExchange(const httplib::Request &request, const httplib::Response &response) const;

    const ServerLimits m_limits;
    const int m_stopEvent = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    std::vector<Endpoint> m_endpoints;
};

Server::Http::Http(const ServerLimits &limits) : m_limits(withRoomForHeaders(limits)) {
    new_task_queue = [this] { return new ConnectionThreads(m_limits.connections); };
    set_socket_options(reuseAddress);
    set_tcp_nodelay(true);
    set_payload_max_length(static_cast<size_t>(limits.body));

    set_pre_routing_handler([this](const httplib::Request &request, httplib::Response &response) {
        const auto refusal = refusalFor(request, response);
        if (!refusal)
            return HandlerResponse::Unhandled;
        write(response, refusalReply(*refusal));
        return HandlerResponse::Handled;
    });
    // "Expect: 100-continue": a client that asks first is refused before it sends its body.
    set_expect_100_continue_handler([this](const httplib::Request &request, httplib::Response &response) {
        const auto refusal = refusalFor(request, response);
        if (!refusal)
            return 100;
        write(response, refusalReply(*refusal));
        return refusal->status;
    });
    set_error_handler(HandlerWithResponse([](const httplib::Request &, httplib::Response &response) {
        if (response.body.empty())
            write(response, refusalReply({response.status, sentenceForStatus(response.status)}));
        return HandlerResponse::Handled;
    }));
    set_exception_handler(
        [](const httplib::Request &, httplib::Response &response, const std::exception_ptr &) {
            write(response, refusalReply({500, sentenceForStatus(500)}));
        });
    set_logger([this](const httplib::Request &request, const httplib::Response &response) {
        logExchange(request, response);
    });
}

void Server::Http::add(const Endpoint &endpoint) {
    const std::string path = endpoint.path.toStdString();
    m_endpoints.push_back(endpoint);
    if (endpoint.method == "GET") {
        Get(path, [endpoint](const httplib::Request &request, httplib::Response &response) {
            write(response, endpoint.answer(requestFrom(request, {})));
        });
        return;
    }
    const auto handler = [this, endpoint](const httplib::Request &request, httplib::Response &response,
                                          const httplib::ContentReader &readBody) {
        if (endpoint.open && request.has_header("Transfer-Encoding"))
            answerWhileItComes(endpoint, request, response, readBody);
        else
            answer(endpoint, request, response, readBody);
    };
    if (endpoint.method == "PUT")
        Put(path, handler);
    else
        Post(path, handler);
}

QByteArrayList Server::Http::methodsOf(const std::string &path) const {
    QByteArrayList methods;
    for (const Endpoint &endpoint : m_endpoints) {
        if (endpoint.path.toStdString() != path)
            continue;
        methods.append(endpoint.method);
        if (endpoint.method == "GET")
            methods.append("HEAD");
    }
    return methods;
}

bool Server::Http::isPolled(const std::string &path) const {
    return std::any_of(m_endpoints.begin(), m_endpoints.end(), [&path](const Endpoint &endpoint) {
        return endpoint.isPolled && endpoint.path.toStdString() == path;
    });
}

std::optional<Refusal> Server::Http::refusalFor(const httplib::Request &request,
                                                httplib::Response &response) const {
    if (const auto refusal = refusalForSender(request))
        return refusal;
    const QByteArrayList methods = methodsOf(request.path);
    if (methods.isEmpty())
        return Refusal{404, u"There is nothing at this address."_s};

    if (!methods.contains(QByteArray::fromStdString(request.method))) {
        const QByteArray list = methods.join(", ");
        response.set_header("Allow", list.toStdString());
        return Refusal{405, u"This address takes %1 only."_s.arg(QString::fromLatin1(list))};
    }
    return refusalForBody(request, m_limits.body);
}

void Server::Http::answer(const Endpoint &endpoint, const httplib::Request &request,
                          httplib::Response &response, const httplib::ContentReader &readBody) const {
    QByteArray body;
    bool tooLarge = false;
    const bool whole = readBody([&](const char *bytes, size_t count) {
        tooLarge = body.size() + static_cast<qint64>(count) > m_limits.body;
        if (!tooLarge)
            body.append(bytes, static_cast<qsizetype>(count));
        return !tooLarge;
    });
    if (tooLarge)
        write(response, refusalReply({413, sentenceForStatus(413)}));
    else if (!whole)
        write(response, refusalReply({408, u"The request did not arrive whole in time."_s}));
    else
        write(response, endpoint.answer(requestFrom(request, std::move(body))));
}

void Server::Http::answerWhileItComes(const Endpoint &endpoint, const httplib::Request &request,
                                      httplib::Response &response, const httplib::ContentReader &readBody) {
    t_stream->receiveFor(endpoint.longestBody);
    const std::unique_ptr<BodyTaker> taker = endpoint.open(requestFrom(request, {}));
    bool isWanted = true;
    const bool isWhole = readBody([&](const char *bytes, size_t count) {
        isWanted = taker->take({bytes, static_cast<qsizetype>(count)});
        return isWanted;
    });
    if (isWhole || !isWanted)
        write(response, taker->finish());
    else
        write(response, refusalReply({408, u"The request did not arrive whole in time."_s}));
}

void Server::Http::logExchange(const httplib::Request &request, const httplib::Response &response) const {
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - t_began);
    if (response.status == 200 && isPolled(request.path) && request.method != "POST" &&
        request.method != "PUT")
        return;
    // What is no request we know could carry anything in its method and its path.
    const bool isKnown = methodsOf(request.path).contains(QByteArray::fromStdString(request.method));
    const std::string what = isKnown ? request.method + ' ' + request.path : "(unknown request)";
    const std::string line =
        what + ' ' + std::to_string(response.status) + ' ' + std::to_string(took.count()) + " ms\n";
    std::fputs(line.c_str(), stderr); // one call, one line: stderr locks itself
}

bool Server::Http::process_and_close_socket(socket_t socket) {
    t_began = Clock::now();
    SocketStream stream(socket, m_limits.connection, m_stopEvent);
    t_stream = &stream;
    bool connectionClosed = false;
    return process_request(stream, true, connectionClosed, prepare);
}

void Server::Http::interrupt() {
    const uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(m_stopEvent, &one, sizeof one);
    // The library's own stop() does nothing while the loop is still about to begin; this ends it then too.
    ::shutdown(svr_sock_, SHUT_RDWR);
}

Server::Server(const ServerLimits &limits) : m_http(std::make_unique<Http>(limits)) {}
Server::~Server() = default;

void Server::add(const Endpoint &endpoint) {
    m_http->add(endpoint);
}

Result<int, QString> Server::bind(const QString &address, int port) {
    const std::string host = address.toStdString();
    errno = 0;
    int bound = port;
    if (port == 0)
        bound = m_http->bind_to_any_port(host);
    else if (!m_http->bind_to_port(host, port))
        bound = -1;
    if (bound < 0)
        return failed(bindFailure(address, port, errno));
    m_http->extendBacklog();
    return bound;
}

void Server::run() {
    m_http->listen_after_bind();
}

void Server::stop() {
    m_http->interrupt();
}

} // namespace velmo::localservice
