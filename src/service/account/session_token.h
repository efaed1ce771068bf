#pragma once

#include "base/interface.h"
#include "base/main_queue.h"

#include <QString>
#include <functional>
#include <future>
#include <mutex>
#include <optional>

class QThreadPool;

namespace velmo {

class Keychain;

/// The token of the session, kept in the keychain and nowhere else. Every read asks the keychain, except that one
/// begun ahead for a dictation serves all requests of that dictation. Any thread, where not said otherwise.
class SessionToken : private Unmovable {
public:
    /// All of them outlive the token. The worker has one thread, so that what is asked of the keychain happens in
    /// order; the queue gives the time. `failureChanged` is called on any thread.
    SessionToken(Keychain &keychain, QString account, QThreadPool &worker, const MainQueue &clock,
                 std::function<void()> failureChanged);
    /// Waits until the keychain has done what it was asked for.
    ~SessionToken();

    /// The token as it is now; nothing where there is none, the keychain has no answer or the text is empty. Waits for
    /// the keychain, at most a second; neither on the main thread nor on the worker.
    [[nodiscard]] std::optional<QString> read();

    /// The same on the worker, which must not wait for a read begun ahead: that one may still wait for the worker.
    [[nodiscard]] std::optional<QString> readOnWorker();

    /// Begins to read.
    void prepare();

    /// Puts a new token in the place of the old, which begins a session; answers its number. Waits for the keychain;
    /// on the worker.
    int store(const QString &token);

    /// Removes the token. Reads from here on find nothing, even if the keychain takes its time or refuses. `done` is
    /// called on the worker once the keychain has answered.
    void forget(std::function<void()> done);

    /// Why the keychain did not do what it was asked last, or does not have this session's token, as a sentence; null
    /// when all is well.
    [[nodiscard]] QString failure() const;

    /// Grows with every `store` and `forget`: what was begun under another number belongs to another session.
    [[nodiscard]] int session() const;

private:
    using Token = std::optional<QString>;
    enum class State {
        Kept,      ///< As far as is known.
        Lost,      ///< The keychain did not take it.
        Forgotten, ///< It was removed, or is to be.
    };
    struct Prepared {
        std::shared_future<Token> token;
        std::chrono::nanoseconds begun;
    };

    [[nodiscard]] std::optional<std::shared_future<Token>> prepared() const;
    [[nodiscard]] Token readKeychain();
    /// What `read` answers, unless another session has begun meanwhile.
    template <class Read>
    [[nodiscard]] Token ofThisSession(Read read);
    [[nodiscard]] State state() const;
    int beginSession(State state);
    void note(const QString &failure);

    Keychain &m_keychain;
    const QString m_account;
    QThreadPool &m_worker;
    const MainQueue &m_clock;
    const std::function<void()> m_failureChanged;

    mutable std::mutex m_mutex; // of what follows
    int m_session = 0;
    State m_state = State::Kept;
    std::optional<Prepared> m_prepared;
    QString m_failure; // one that goes on is logged once
};

} // namespace velmo
