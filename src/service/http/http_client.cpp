#include "service/http/http_client.h"

#include "service/http/http_exchange.h"
#include "service/http/transport_failure.h"

#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace velmo {

namespace {

/// How often a running exchange is asked whether it moves. An idle limit may be reached late by twice this:
/// once for the last byte noticed, once for the limit noticed.
constexpr int kSamplePeriodMs = 100;
/// With nothing under way the thread sleeps until it is woken.
constexpr int kForeverMs = 24 * 60 * 60 * 1000;

/// A connection not open by then is of no use to the upload it was meant for.
constexpr HttpLimits kWarmingLimits{std::chrono::seconds(10), std::nullopt};

void prepareLibrary() {
    static const CURLcode prepared = curl_global_init(CURL_GLOBAL_DEFAULT);
    static_cast<void>(prepared);
}

/// Signals are the main thread's business, and a broken pipe here is an answer of a call.
void blockSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

} // namespace

/// The thread, what waits for it, and what it has under way.
class HttpClient::Worker {
public:
    explicit Worker(HttpClientOptions options)
        : m_options(std::move(options)), m_multi(curl_multi_init()), m_thread([this] { run(); }) {}
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;
    ~Worker();

    /// Without a completion the outcome is nobody's business.
    void enqueue(HttpRequest request, Completion completion);
    void waitUntilIdle();
    void wake() { curl_multi_wakeup(m_multi.get()); }

private:
    struct Queued {
        HttpRequest request;
        Completion completion;
    };
    struct Running {
        std::unique_ptr<HttpExchange> exchange;
        Completion completion;
    };
    struct MultiCleanup {
        void operator()(CURLM *multi) const { curl_multi_cleanup(multi); }
    };

    void run();
    [[nodiscard]] bool isEnding();
    [[nodiscard]] std::optional<Queued> takeQueued();
    void startQueued();
    void start(Queued queued);
    void finishDone();
    void resumeGrowing();
    void endOverdue();
    void endAll();
    void finish(CURL *handle, CURLcode code);
    void end(CURL *handle, const TransportFailure &failure);
    [[nodiscard]] Running detach(CURL *handle);
    void complete(const Completion &completion, HttpOutcome outcome);

    const HttpClientOptions m_options;
    std::unique_ptr<CURLM, MultiCleanup> m_multi;
    std::unordered_map<CURL *, Running> m_running; // the thread's alone

    std::mutex m_mutex; // of what follows
    std::condition_variable m_idle;
    std::deque<Queued> m_queued;
    std::size_t m_awaited = 0; ///< Completions still to be called.
    bool m_ending = false;

    std::thread m_thread; // last: it uses all of the above
};

HttpClient::Worker::~Worker() {
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    wake();
    m_thread.join();
}

void HttpClient::Worker::enqueue(HttpRequest request, Completion completion) {
    {
        const std::lock_guard lock(m_mutex);
        if (completion)
            ++m_awaited;
        m_queued.push_back({std::move(request), std::move(completion)});
    }
    wake();
}

void HttpClient::Worker::waitUntilIdle() {
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_awaited == 0; });
}

void HttpClient::Worker::run() {
    blockSignals();
    while (!isEnding()) {
        startQueued();
        resumeGrowing();
        int running = 0;
        curl_multi_perform(m_multi.get(), &running);
        finishDone();
        endOverdue();
        const int longestWait = m_running.empty() ? kForeverMs : kSamplePeriodMs;
        curl_multi_poll(m_multi.get(), nullptr, 0, longestWait, nullptr);
    }
    endAll();
}

bool HttpClient::Worker::isEnding() {
    const std::lock_guard lock(m_mutex);
    return m_ending;
}

std::optional<HttpClient::Worker::Queued> HttpClient::Worker::takeQueued() {
    const std::lock_guard lock(m_mutex);
    if (m_queued.empty())
        return std::nullopt;
    Queued first = std::move(m_queued.front());
    m_queued.pop_front();
    return first;
}

void HttpClient::Worker::startQueued() {
    while (auto queued = takeQueued())
        start(std::move(*queued));
}

void HttpClient::Worker::start(Queued queued) {
    auto exchange = HttpExchange::create(std::move(queued.request), m_options);
    if (!exchange) {
        complete(queued.completion, failed(invalidAddress()));
        return;
    }
    CURL *handle = exchange->handle();
    m_running.emplace(handle, Running{std::move(exchange), std::move(queued.completion)});
    if (curl_multi_add_handle(m_multi.get(), handle) != CURLM_OK)
        finish(handle, CURLE_FAILED_INIT);
}

void HttpClient::Worker::finishDone() {
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi.get(), &left)) {
        if (message->msg == CURLMSG_DONE)
            finish(message->easy_handle, message->data.result);
    }
}

void HttpClient::Worker::resumeGrowing() {
    for (const auto &[handle, running] : m_running)
        running.exchange->resume();
}

void HttpClient::Worker::endOverdue() {
    std::vector<CURL *> overdue;
    for (const auto &[handle, running] : m_running) {
        if (running.exchange->isOverdue(HttpExchange::Clock::now()))
            overdue.push_back(handle);
    }
    for (CURL *handle : overdue)
        end(handle, timedOut());
}

/// A completion may still send: what it sends ends here too.
void HttpClient::Worker::endAll() {
    while (!m_running.empty())
        end(m_running.begin()->first, connectionLost());
    while (const auto queued = takeQueued())
        complete(queued->completion, failed(connectionLost()));
}

void HttpClient::Worker::finish(CURL *handle, CURLcode code) {
    const Running running = detach(handle);
    complete(running.completion, running.exchange->takeOutcome(code));
}

void HttpClient::Worker::end(CURL *handle, const TransportFailure &failure) {
    const Running running = detach(handle);
    complete(running.completion, failed(failure));
}

HttpClient::Worker::Running HttpClient::Worker::detach(CURL *handle) {
    curl_multi_remove_handle(m_multi.get(), handle);
    return std::move(m_running.extract(handle).mapped());
}

void HttpClient::Worker::complete(const Completion &completion, HttpOutcome outcome) {
    if (!completion)
        return;
    try {
        completion(std::move(outcome));
    } catch (...) { // NOLINT(bugprone-empty-catch)
        // Completions do not throw. One that does is heard out no further; the others still get their
        // outcomes, and whoever waits is let go.
    }
    const std::lock_guard lock(m_mutex);
    if (--m_awaited == 0)
        m_idle.notify_all();
}

HttpClient::HttpClient(HttpClientOptions options) : m_options(std::move(options)) {}

HttpClient::~HttpClient() = default;

HttpClient::Worker &HttpClient::worker() {
    std::call_once(m_begun, [this] {
        prepareLibrary();
        m_worker = std::make_unique<Worker>(m_options);
    });
    return *m_worker;
}

void HttpClient::send(HttpRequest request, Completion completion) {
    worker().enqueue(std::move(request), std::move(completion));
}

void HttpClient::lookForMore() {
    worker().wake();
}

void HttpClient::warm(const QString &origin) {
    worker().enqueue({"HEAD", origin + u'/', {}, std::nullopt, kWarmingLimits}, {});
}

void HttpClient::waitUntilIdle() {
    worker().waitUntilIdle();
}

} // namespace velmo
