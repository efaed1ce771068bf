#pragma once

#include "base/interface.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velmo::localservice {

using Headers = std::vector<std::pair<QByteArray, QByteArray>>;

/// A request that has arrived whole, within the limits, and from this machine.
struct Request {
    Headers headers;
    QByteArray body;
    QByteArray query;            ///< What stands after the "?" of the address, as it was sent.
    bool isFromLoopback = false; ///< The connection comes from a loopback address.
    std::function<bool()> isAbandoned =
        {}; ///< Whether the client has closed the connection by now; never null in an answer.

    /// The value of the header of that name (upper and lower case are the same), or nothing.
    [[nodiscard]] std::optional<QByteArray> header(QByteArrayView name) const;
};

/// What a request is answered with: a status and a JSON object, or a page for a person.
struct Reply {
    int status = 200;
    QJsonObject body;
    Headers headers = {};
    QByteArray page = {}; ///< HTML in UTF-8; empty: the JSON object is sent.
};

/// Why something asked for is not done: the HTTP status to answer with, and a sentence for the person.
struct Refusal {
    int status = 500;
    QString sentence;
};

/// {"error": sentence}, the form of every reply that is no success.
[[nodiscard]] Reply refusalReply(const Refusal &refusal);

/// Takes a request's body while it arrives. On the thread of its connection; dropped without `finish` when the client goes
/// away.
class BodyTaker : public Interface {
public:
    /// @return false when no more of it is wanted; `finish` then says why.
    [[nodiscard]] virtual bool take(QByteArrayView bytes) = 0;

    /// Answers, once all of the body has been taken. May wait.
    [[nodiscard]] virtual Reply finish() = 0;
};

/// One address of the service. `answer` runs on the thread of its connection, for several connections at
/// once, and may wait.
struct Endpoint {
    QByteArray method; ///< "GET" (answers HEAD too), "POST" or "PUT".
    QByteArray path;   ///< As it stands, without a query: "/api/transcribe".
    std::function<Reply(const Request &)> answer;

    /// Where it is given, takes bodies that come in chunks, for as long as `longestBody`; the request it is given has none
    /// yet.
    std::function<std::unique_ptr<BodyTaker>(const Request &)> open = {};
    std::chrono::seconds longestBody = {};

    /// Asked again and again by whoever watches: an answer with 200 is not worth a line of the log.
    bool isPolled = false;
};

[[nodiscard]] inline Endpoint polled(Endpoint endpoint) {
    endpoint.isPolled = true;
    return endpoint;
}

} // namespace velmo::localservice
