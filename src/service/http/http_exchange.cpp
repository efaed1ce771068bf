#include "service/http/http_exchange.h"

#include "service/http/loopback.h"
#include "service/http/transport_failure.h"

#include <QUrl>
#include <algorithm>
#include <cstring>

namespace velmo {

namespace {

/// No reply of the service comes near these; they keep a server gone wrong from filling the memory. The head
/// counts all headers of all provisional replies too.
constexpr qsizetype kLargestReplyBody = 16LL * 1024 * 1024;
constexpr qsizetype kLargestReplyHead = 256LL * 1024;

/// A kept-alive connection idle for 30 s or more is not used again: servers and routers drop them about then,
/// often silently, and a request sent into a dropped one is lost. libcurl compares whole seconds, "more than".
constexpr long kLongestIdleConnection = 29;

std::optional<QUrl> webAddress(const QString &text) {
    QUrl url(text, QUrl::StrictMode);
    const bool isWeb = url.scheme() == u"http" || url.scheme() == u"https";
    if (!url.isValid() || !isWeb || url.host().isEmpty() || !url.userInfo().isEmpty())
        return std::nullopt;
    return url;
}

QByteArray withoutControls(const QByteArray &text) {
    QByteArray kept;
    kept.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return code >= 0x20 && code != 0x7F;
    });
    return kept.trimmed();
}

/// In libcurl's list "Name:" would take the header away; "Name;" sends it with an empty value.
QByteArray headerLine(const QByteArray &name, const QByteArray &value) {
    const QByteArray kept = withoutControls(value);
    return withoutControls(name) + (kept.isEmpty() ? ";" : ": " + kept);
}

/// A limit of zero would mean none to libcurl.
long milliseconds(std::chrono::milliseconds limit) {
    return std::max(1L, static_cast<long>(limit.count()));
}

void setAddress(CURL *curl, const QByteArray &url, bool isThisMachine) {
    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(curl, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (isThisMachine)
        curl_easy_setopt(curl, CURLOPT_PROXY, "");
}

void setSecurity(CURL *curl, const HttpClientOptions &options) {
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 2L);
    curl_easy_setopt(curl, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    if (!options.certificateAuthorities.isEmpty())
        curl_easy_setopt(curl, CURLOPT_CAINFO, options.certificateAuthorities.toUtf8().constData());
}

} // namespace

std::unique_ptr<HttpExchange> HttpExchange::create(HttpRequest request, const HttpClientOptions &options) {
    const auto url = webAddress(request.url);
    if (!url)
        return nullptr;
    std::unique_ptr<HttpExchange> exchange(new HttpExchange(std::move(request)));
    setAddress(exchange->handle(), url->toEncoded(), isLoopbackHost(url->host()));
    setSecurity(exchange->handle(), options);
    exchange->setMethodAndBody();
    exchange->setHeaders();
    exchange->setReceivers();
    return exchange;
}

HttpExchange::HttpExchange(HttpRequest request) : m_request(std::move(request)), m_handle(curl_easy_init()) {
    CURL *curl = handle();
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    if (!m_request.growingBody)
        curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, milliseconds(m_request.limits.whole));
    // An exchange given up during the name look-up leaves the look-up to its own thread. Without this libcurl
    // waits for it (up to half a minute), and every other exchange with it.
    curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXAGE_CONN, kLongestIdleConnection);
}

void HttpExchange::setMethodAndBody() {
    CURL *curl = handle();
    const QByteArray &method = m_request.method;
    if (method == "HEAD") {
        curl_easy_setopt(curl, CURLOPT_NOBODY, 1L);
    } else if (m_request.body || method != "GET") {
        setBody();
    }
    curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, method.constData());
    curl_easy_setopt(curl, CURLOPT_PREREQFUNCTION, &HttpExchange::allowOneRequest);
    curl_easy_setopt(curl, CURLOPT_PREREQDATA, this);
}

void HttpExchange::setBody() {
    CURL *curl = handle();
    curl_easy_setopt(curl, CURLOPT_POST, 1L);
    if (m_request.growingBody)
        appendHeader("Transfer-Encoding: chunked");
    else
        curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE,
                         static_cast<curl_off_t>(m_request.body.value_or(QByteArray()).size()));
    // No function to seek: libcurl can never begin the body again.
    curl_easy_setopt(curl, CURLOPT_READFUNCTION, &HttpExchange::giveBody);
    curl_easy_setopt(curl, CURLOPT_READDATA, this);
}

void HttpExchange::setHeaders() {
    CURL *curl = handle();
    curl_easy_setopt(curl, CURLOPT_USERAGENT, "Velmo/" VELMO_VERSION);
    for (const auto &[name, value] : m_request.headers)
        appendHeader(headerLine(name, value));
    // What libcurl would add by itself.
    for (const char *name : {"Accept", "Content-Type", "Expect"}) {
        if (!hasHeader(name))
            appendHeader(QByteArray(name) + ':');
    }
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, m_headers.get());
}

void HttpExchange::setReceivers() {
    CURL *curl = handle();
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, &HttpExchange::takeHead);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &HttpExchange::takeBody);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(curl, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kLargestReplyBody));
}

void HttpExchange::appendHeader(const QByteArray &line) {
    curl_slist *list = curl_slist_append(m_headers.get(), line.constData());
    if (!m_headers)
        m_headers.reset(list);
}

bool HttpExchange::hasHeader(const char *name) const {
    return std::any_of(m_request.headers.begin(), m_request.headers.end(), [name](const auto &header) {
        return header.first.compare(name, Qt::CaseInsensitive) == 0;
    });
}

void HttpExchange::resume() {
    if (std::exchange(m_isPaused, false))
        curl_easy_pause(handle(), CURLPAUSE_CONT);
}

bool HttpExchange::isOverdue(Clock::time_point now) {
    if (const auto &body = m_request.growingBody) {
        if (body->isAbandoned())
            return true;
        const auto wholeSince = body->wholeSince();
        if (!wholeSince) {
            m_lastProgress = now;
            return false;
        }
        if (now - *wholeSince >= m_request.limits.whole)
            return true;
    }
    const curl_off_t moved = bytesMoved();
    if (moved != m_lastBytesMoved) {
        m_lastBytesMoved = moved;
        m_lastProgress = now;
    }
    return m_request.limits.idle && now - m_lastProgress >= *m_request.limits.idle;
}

curl_off_t HttpExchange::bytesMoved() const {
    curl_off_t uploaded = 0;
    long requestHead = 0;
    curl_easy_getinfo(handle(), CURLINFO_SIZE_UPLOAD_T, &uploaded);
    curl_easy_getinfo(handle(), CURLINFO_REQUEST_SIZE, &requestHead);
    return uploaded + requestHead + m_headSize + m_replyBody.size();
}

HttpOutcome HttpExchange::takeOutcome(CURLcode code) {
    if (code != CURLE_OK)
        return failed(failureOf(code));
    long status = 0;
    curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
    return HttpReply{static_cast<int>(status), std::move(m_replyBody)};
}

size_t HttpExchange::giveBody(char *buffer, size_t size, size_t count, void *exchange) {
    auto *self = static_cast<HttpExchange *>(exchange);
    if (self->m_request.growingBody)
        return self->giveGrowingBody(buffer, size * count);
    if (!self->m_request.body)
        return 0;
    const QByteArray &body = *self->m_request.body;
    const size_t given = std::min(static_cast<size_t>(body.size() - self->m_bodySent), size * count);
    std::memcpy(buffer, body.constData() + self->m_bodySent, given);
    self->m_bodySent += static_cast<qsizetype>(given);
    return given;
}

size_t HttpExchange::giveGrowingBody(char *buffer, size_t size) {
    GrowingBody &body = *m_request.growingBody;
    const bool isWhole = body.wholeSince().has_value(); // asked first: what is added until then is read below
    const qsizetype given = body.read(buffer, static_cast<qsizetype>(size));
    m_isPaused = given == 0 && !isWhole;
    return m_isPaused ? CURL_READFUNC_PAUSE : static_cast<size_t>(given);
}

size_t HttpExchange::takeHead(char *, size_t size, size_t count, void *exchange) {
    auto *self = static_cast<HttpExchange *>(exchange);
    const size_t length = size * count;
    self->m_headSize += static_cast<qsizetype>(length);
    return self->m_headSize > kLargestReplyHead ? 0 : length;
}

size_t HttpExchange::takeBody(char *data, size_t size, size_t count, void *exchange) {
    QByteArray &body = static_cast<HttpExchange *>(exchange)->m_replyBody;
    const size_t length = size * count;
    if (length > static_cast<size_t>(kLargestReplyBody - body.size()))
        return 0;
    body.append(data, static_cast<qsizetype>(length));
    return length;
}

/// Called with the connection ready, just before the request goes out. libcurl comes here a second time where
/// a kept-alive connection died before the answer and it would silently send the request again.
int HttpExchange::allowOneRequest(void *exchange, char *, char *, int, int) {
    auto *self = static_cast<HttpExchange *>(exchange);
    const bool isFirst = !std::exchange(self->m_requestBegun, true);
    return isFirst ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

} // namespace velmo
