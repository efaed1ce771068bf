#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace velmo {

/// When an exchange is given up. Looking the name up and connecting count towards both limits.
struct HttpLimits {
    std::chrono::milliseconds whole; ///< From start to the last byte of the reply.

    /// Without progress either way: no byte of the request taken by the connection, no line of the reply's
    /// head and no byte of its body received. Absent: no such limit.
    std::optional<std::chrono::milliseconds> idle;
};

using HttpHeaders = std::vector<std::pair<QByteArray, QByteArray>>;

/// One exchange. Headers go out as given, in order; the client adds only Host, User-Agent and, where there is
/// or could be a body, Content-Length. Control characters cannot stand in a header and are left out of it, so
/// a value from outside cannot become a header of its own.
struct HttpRequest {
    QByteArray method; ///< "GET", "POST", "PUT"; a POST or PUT without a body has the length 0.
    QString url;       ///< http or https, without user or password.
    HttpHeaders headers;
    std::optional<QByteArray> body;
    HttpLimits limits;
};

struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// Why there is no reply. `description` is a sentence for the person.
struct TransportFailure {
    enum class Kind {
        TimedOut,       ///< Any limit of the exchange, connecting and looking up included.
        Network,        ///< Not found, refused, lost, insecure: `description` says which.
        InvalidReply,   ///< What came back is no HTTP reply, or is larger than is accepted.
        InvalidAddress, ///< The text is no address; nothing was sent.
    };
    Kind kind;
    QString description;
};

using HttpOutcome = Result<HttpReply, TransportFailure>;

struct HttpClientOptions {
    /// A PEM file of the authorities whose certificates are trusted; empty: those of the system.
    QString certificateAuthorities;
};

/// Exchanges with a server, by libcurl in a thread of its own. Redirects are never followed, certificates are
/// verified, a proxy is never used for this machine, reply bodies over 16 MiB are refused. Nothing is sent
/// twice: where a kept-alive connection dies before the answer the server may have acted on the request, so
/// the exchange ends as a lost connection.
class HttpClient {
public:
    /// Called exactly once, on the client's thread, also for every failure and for exchanges cut off by the
    /// end of the client. It must not wait; it may send, but not destroy the client.
    using Completion = std::function<void(HttpOutcome)>;

    explicit HttpClient(HttpClientOptions options = {});
    HttpClient(const HttpClient &) = delete;
    HttpClient &operator=(const HttpClient &) = delete;
    /// Ends running exchanges (their completions report a lost connection) and waits for the thread.
    ~HttpClient();

    /// Any thread; returns at once.
    void send(HttpRequest request, Completion completion);

    /// Opens a connection to the origin ("https://host[:port]") ahead of need, with a HEAD request for its
    /// root that carries no header of ours but the user agent. Its outcome is ignored. Any thread.
    void warm(const QString &origin);

    /// Waits until every exchange begun so far, and every one their completions begin (warming aside), has
    /// called its completion. Not on the client's thread.
    void waitUntilIdle();

private:
    class Worker;
    [[nodiscard]] Worker &worker();

    HttpClientOptions m_options;
    std::once_flag m_begun;
    std::unique_ptr<Worker> m_worker; ///< Made for the first exchange: the library takes 3 MiB, even at rest.
};

} // namespace velmo
