#pragma once

#include "base/interface.h"
#include "service/http/http_message.h"

#include <functional>
#include <memory>
#include <mutex>

namespace velmo {

struct HttpClientOptions {
    /// A PEM file of the authorities whose certificates are trusted; empty: those of the system.
    QString certificateAuthorities;
};

/// Exchanges with a server, by libcurl in a thread of its own. Redirects are never followed, certificates are
/// verified, a proxy is never used for this machine, reply bodies over 16 MiB are refused. Nothing is sent
/// twice: where a kept-alive connection dies before the answer the server may have acted on the request, so
/// the exchange ends as a lost connection.
class HttpClient : private Unmovable {
public:
    /// Called exactly once, on the client's thread, also for every failure and for exchanges cut off by the
    /// end of the client. It must not wait; it may send, but not destroy the client.
    using Completion = std::function<void(HttpOutcome)>;

    explicit HttpClient(HttpClientOptions options = {});
    /// Ends running exchanges (their completions report a lost connection) and waits for the thread.
    ~HttpClient();

    /// Any thread; returns at once.
    void send(HttpRequest request, Completion completion);

    /// A growing body has become whole or is abandoned: it is asked at once, not at its next turn. Any thread.
    void lookForMore();

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
