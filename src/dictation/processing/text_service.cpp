#include "dictation/processing/text_service.h"

#include "base/json.h"
#include "service/http/http_client.h"
#include "service/wire/service_reply.h"

#include <QThreadPool>
#include <chrono>
#include <mutex>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using Clock = std::chrono::steady_clock;

/// Status 200 and a JSON object with a string "text" that is not empty; everything else is no text.
Result<QString, NoText> textOf(const HttpOutcome &outcome) {
    if (!outcome)
        return failed(NoText{outcome.error().description});
    const auto object = objectOf(outcome);
    const auto text = object ? json::string(*object, "text"_L1) : std::nullopt;
    if (!text || text->isEmpty())
        return failed(NoText{});
    return *text;
}

} // namespace

/// One thread that the network's answers reach as long as the service lives.
class TextService::Worker {
public:
    Worker() { m_pool.setMaxThreadCount(1); }

    void start(std::function<void()> task) {
        const std::lock_guard lock(m_mutex);
        if (!m_hasEnded)
            m_pool.start(std::move(task));
    }

    void end() {
        {
            const std::lock_guard lock(m_mutex);
            m_hasEnded = true;
        }
        m_pool.waitForDone();
    }

private:
    std::mutex m_mutex; // of m_hasEnded
    bool m_hasEnded = false;
    QThreadPool m_pool;
};

TextService::TextService(ServiceOrigin origin, HttpClient &http, TokenSource &tokens,
                         const Preferences &preferences)
    : m_origin(std::move(origin)),
      m_http(http),
      m_tokens(tokens),
      m_preferences(preferences),
      m_worker(std::make_shared<Worker>()) {}

TextService::~TextService() {
    m_worker->end();
}

void TextService::send(RequestKind kind, const QJsonObject &content, Completion completion) {
    m_worker->start([this, kind, content, completion = std::move(completion)] {
        HttpRequest request =
            serviceRequest(kind, m_origin, senderOfText(m_tokens, m_preferences), {json::compact(content)});
        m_http.send(std::move(request),
                    [worker = m_worker, completion, sent = Clock::now()](const HttpOutcome &outcome) {
                        const std::chrono::duration<double, std::milli> elapsed = Clock::now() - sent;
                        const TextAnswer answer = {textOf(outcome), elapsed.count()};
                        worker->start([completion, answer] { completion(answer); });
                    });
    });
}

} // namespace velmo
