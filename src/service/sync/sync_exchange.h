#pragma once

#include "base/interface.h"
#include "base/lifetime.h"
#include "base/main_queue.h"
#include "service/wire/service_request.h"

#include <QJsonObject>
#include <functional>

class QThreadPool;

namespace velmo {

class HttpClient;
class TokenSource;

/// What a synchronisation got back: a JSON object, empty where the service sent no other than that all is well.
struct SyncBody {
    QByteArray text;
    QJsonObject object;
};

/// Why it got nothing: where the failure comes from, its number and what it says.
struct SyncFailure {
    QString domain;
    int code = 0;
    QString message;

    /// All of it, for the log: Error Domain=SyncManager Code=401 "HTTP 401".
    [[nodiscard]] QString description() const;
};

using SyncReply = Result<SyncBody, SyncFailure>;

/// Any status from 200 to 299 is a success, whatever its body.
[[nodiscard]] SyncReply syncReply(const HttpOutcome &outcome);

/// Exchanges of an account with the service. Work that waits runs on the worker; answers come on the main thread, and
/// none after the end of this object.
class SyncExchange : private Unmovable {
public:
    struct Collaborators {
        MainQueue &queue;
        QThreadPool &worker; ///< Of one thread: it waits for keychain and preferences.
        TokenSource &tokens;
        HttpClient &http;
    };

    using Answer = std::function<void(const SyncReply &)>;

    SyncExchange(ServiceOrigin origin, const Collaborators &collaborators);
    ~SyncExchange() = default;

    [[nodiscard]] const QString &baseURL() const { return m_origin.baseURL(); }

    /// Main thread.
    void onWorker(std::function<void()> task);

    void waitForWorker();

    /// Any thread.
    void onMain(std::function<void()> task);

    /// The session's token as it is now. On the worker.
    [[nodiscard]] std::optional<QString> token();

    /// Any thread.
    void send(RequestKind kind, const QString &token, std::optional<QByteArray> body, Answer answer);

private:
    const ServiceOrigin m_origin;
    Collaborators m_with;
    Lifetime m_lifetime;
};

} // namespace velmo
