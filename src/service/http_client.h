#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velmo {

/// When an exchange is given up. Time-outs of connecting and of the name look-up count as the same time-out.
struct HttpLimits {
    std::chrono::milliseconds whole;               ///< From start to the last byte of the reply.
    std::optional<std::chrono::milliseconds> idle; ///< Without a byte either way; absent: no such limit.
};

/// One exchange. Headers go out as given, in order; the client adds only Host, User-Agent and, with a body,
/// Content-Length.
struct HttpRequest {
    QByteArray method; ///< "GET", "POST", "PUT".
    QString url;
    std::vector<std::pair<QByteArray, QByteArray>> headers;
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

/// Exchanges with a server, by libcurl in a thread of its own. Redirects are never followed, nothing is sent
/// twice, certificates are verified, a proxy is never used for this machine, reply bodies over 16 MiB are
/// refused.
class HttpClient {
public:
    /// Called exactly once, on the client's thread, also for every failure and for exchanges cut off by the
    /// end of the client. It must not wait.
    using Completion = std::function<void(HttpOutcome)>;

    HttpClient();
    HttpClient(const HttpClient &) = delete;
    HttpClient &operator=(const HttpClient &) = delete;
    /// Ends running exchanges (their completions report a lost connection) and waits for the thread.
    ~HttpClient();

    /// Any thread; returns at once.
    void send(HttpRequest request, Completion completion);

    /// Opens a connection to the origin ("https://host[:port]") ahead of need, with a HEAD request for its
    /// root that carries no header of ours but the user agent. Its outcome is ignored. Any thread.
    void warm(const QString &origin);

    /// Waits until every exchange begun so far (warming aside) has called its completion. Not on the client's
    /// thread.
    void waitUntilIdle();

private:
    class Worker;
    std::unique_ptr<Worker> m_worker;
};

} // namespace velmo
