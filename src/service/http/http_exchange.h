#pragma once

#include "base/interface.h"
#include "service/http/http_client.h"

#include <curl/curl.h>

namespace velmo {

/// One exchange on an easy handle of libcurl: how it is set up, how far it has come, what became of it.
/// Belongs to the client's thread. Not moved: libcurl holds its address.
class HttpExchange : private Unmovable {
public:
    using Clock = std::chrono::steady_clock;

    /// Nothing when the request's text is no address of the web or names a user.
    [[nodiscard]] static std::unique_ptr<HttpExchange> create(HttpRequest request,
                                                              const HttpClientOptions &options);
    ~HttpExchange() = default;

    [[nodiscard]] CURL *handle() const { return m_handle.get(); }

    /// Goes on with a growing body that had nothing to give.
    void resume();

    /// Takes note of how far the exchange has come; whether it stood still for as long as its idle limit, or
    /// its growing body is abandoned or was whole for as long as the exchange may take. Called a few times a
    /// second: libcurl's own low-speed limit counts whole seconds and also the time the server thinks before it
    /// reads.
    [[nodiscard]] bool isOverdue(Clock::time_point now);

    /// What became of it, given how libcurl ended it. The reply's body is handed over.
    [[nodiscard]] HttpOutcome takeOutcome(CURLcode code);

private:
    struct EasyCleanup {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
    };
    struct ListCleanup {
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };

    explicit HttpExchange(HttpRequest request);

    void setMethodAndBody();
    void setBody();
    void setHeaders();
    void setReceivers();
    void appendHeader(const QByteArray &line);
    [[nodiscard]] bool hasHeader(const char *name) const;
    [[nodiscard]] curl_off_t bytesMoved() const;
    size_t giveGrowingBody(char *buffer, size_t size);

    static size_t giveBody(char *buffer, size_t size, size_t count, void *exchange);
    static size_t takeHead(char *data, size_t size, size_t count, void *exchange);
    static size_t takeBody(char *data, size_t size, size_t count, void *exchange);
    static int allowOneRequest(void *exchange, char *, char *, int, int);

    HttpRequest m_request;
    std::unique_ptr<CURL, EasyCleanup> m_handle;
    std::unique_ptr<curl_slist, ListCleanup> m_headers;
    qsizetype m_bodySent = 0;
    bool m_isPaused = false;
    qsizetype m_headSize = 0;
    QByteArray m_replyBody;
    bool m_requestBegun = false;
    curl_off_t m_lastBytesMoved = 0;
    Clock::time_point m_lastProgress = Clock::now();
};

} // namespace velmo
