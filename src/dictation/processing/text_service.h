#pragma once

#include "base/interface.h"
#include "service/wire/service_request.h"

#include <QJsonObject>
#include <functional>
#include <memory>

namespace velmo {

class HttpClient;

/// Why the service gave no text.
struct NoText {
    /// What kept the exchange from its end, in a sentence; absent when the service did answer, but not with a text.
    std::optional<QString> failure;
};

/// The service's answer to a text.
struct TextAnswer {
    Result<QString, NoText> text; ///< As it came, never empty.
    double milliseconds;          ///< From sending to the last byte.
};

/// Has the service rewrite texts. Token and device identifier are read, and completions called, on a thread of its own,
/// so neither the main nor the network thread ever waits.
class TextService : private Unmovable {
public:
    using Completion = std::function<void(const TextAnswer &)>;

    /// The parts outlive the service; the HTTP client may have answers for it still to come.
    TextService(ServiceOrigin origin, HttpClient &http, TokenSource &tokens, const Preferences &preferences);
    /// Waits for completions being called. Those of exchanges under way are not called any more.
    ~TextService();

    [[nodiscard]] const QString &baseURL() const { return m_origin.baseURL(); }

    /// Sends `content` and calls the completion once, also for every failure. Any thread; returns at once.
    void send(RequestKind kind, const QJsonObject &content, Completion completion);

private:
    class Worker;

    const ServiceOrigin m_origin;
    HttpClient &m_http;
    TokenSource &m_tokens;
    const Preferences &m_preferences;
    const std::shared_ptr<Worker> m_worker;
};

} // namespace velmo
