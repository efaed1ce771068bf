#pragma once

#include "base/interface.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace velmo::testing {

/// A request as it came over the wire.
struct ReceivedRequest {
    int connection = 0; ///< 0 is the first connection the server accepted.
    QByteArray method;
    QByteArray path;
    QByteArray head; ///< The request line and the header lines, each with its line end.
    QByteArray body;

    /// The value of the header of that name (any case), or nothing.
    [[nodiscard]] std::optional<QByteArray> header(const QByteArray &name) const;
};

/// What the server does with a request: how much of it it reads, which bytes it writes, and then.
struct Reaction {
    enum class Reads { All, Head };
    enum class Then {
        KeepAlive, ///< Waits for the next request.
        Close,
        Reset, ///< The peer sees "connection reset".
        Hold,  ///< Says nothing more until the peer leaves, but reads on.
        Deaf,  ///< Neither reads nor writes any more.
    };

    QByteArray bytes;
    Then then = Then::KeepAlive;
    Reads reads = Reads::All;
    std::chrono::milliseconds pace{0}; ///< Between one byte and the next; zero: all at once.
};

/// A whole reply with its length, after which the connection is kept.
[[nodiscard]] Reaction reply(int status, const QByteArray &body,
                             const QByteArray &contentType = "application/json");

/// An HTTP server on loopback with threads of its own that does as it is told and remembers what came. A path
/// nobody spoke of gets 404. It accepts until its end, which cuts every connection.
class ScriptedServer : private Unmovable {
public:
    ScriptedServer();
    ~ScriptedServer();

    /// "http://127.0.0.1:PORT".
    [[nodiscard]] QString origin() const;

    /// Every request for the path, whatever its query, is answered so.
    void answer(const QByteArray &path, int status, const QByteArray &body);

    /// The first request for the path meets the first reaction, and so on; the last one stays.
    void react(const QByteArray &path, std::deque<Reaction> reactions);

    /// What came so far.
    [[nodiscard]] std::vector<ReceivedRequest> requests() const;
    [[nodiscard]] int connections() const;

    /// Waits until that many connections or requests have come, or requests have been reacted to (a minute at
    /// most).
    void waitForConnections(std::size_t count) const;
    void waitForRequests(std::size_t count) const;
    void waitForReplies(std::size_t count) const;

    /// An origin where nobody listens: connecting is refused.
    [[nodiscard]] static QString refusingOrigin();

private:
    class Connection;

    void acceptAll();
    [[nodiscard]] Reaction reactionTo(const QByteArray &path);
    void remember(ReceivedRequest request);
    void rememberReply();
    void waitUntil(const std::function<bool()> &holds) const;
    [[nodiscard]] bool pause(std::chrono::milliseconds duration);

    int m_listener;
    mutable std::mutex m_mutex; // of what follows, up to the thread
    mutable std::condition_variable m_changed;
    bool m_ending = false;
    std::map<QByteArray, std::deque<Reaction>> m_reactions;
    std::vector<ReceivedRequest> m_requests;
    std::size_t m_replies = 0;
    std::list<Connection> m_connections;
    std::thread m_acceptor;
};

} // namespace velmo::testing
