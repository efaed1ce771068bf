#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "localservice/http/endpoint.h"
#include "localservice/http/socket_stream.h"

#include <memory>

namespace velmo::localservice {

struct ServerLimits {
    qint64 body = 32LL * 1024 * 1024; ///< Bytes of a request's body; more is answered with 413.
    int connections = 256;            ///< Served at once; further ones wait.
    ConnectionLimits connection;
};

/// The HTTP side of the service: takes requests in, within the limits, refuses those that are not from this
/// machine, hands each to its endpoint and sends the reply. Every refusal is a JSON object with an "error".
/// A line on standard error tells method, path, status and duration of each request, never what it carries.
/// Each connection carries one request: on one machine a connection costs next to nothing, and a client that
/// reuses none can never send its request into one that is just being closed.
class Server : private Unmovable {
public:
    explicit Server(const ServerLimits &limits = {});
    ~Server();

    /// Before `run`.
    void add(const Endpoint &endpoint);

    /// Takes the port (0: any free one) and answers its number, or a sentence why it cannot be had. From here
    /// on connections are accepted; they are served once `run` is.
    [[nodiscard]] Result<int, QString> bind(const QString &address, int port);

    /// Serves until `stop`; returns when the requests under way then have been answered.
    void run();

    /// Takes no more requests; those that have not arrived whole are given up. Any thread, at most once.
    void stop();

private:
    class Http;
    std::unique_ptr<Http> m_http;
};

} // namespace velmo::localservice
