#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace velmo {

/// When an exchange is given up. Looking the name up and connecting count towards both limits.
struct HttpLimits {
    std::chrono::milliseconds whole; ///< From start to the last byte of the reply.

    /// Without progress either way: no byte of the request taken by the connection, no line of the reply's
    /// head and no byte of its body received. Absent: no such limit.
    std::optional<std::chrono::milliseconds> idle;
};

using HttpHeaders = std::vector<std::pair<QByteArray, QByteArray>>;

/// One exchange. Headers go out as given, in order; the client adds only Host, User-Agent and, where there is
/// or could be a body, Content-Length. Control characters cannot stand in a header and are left out of it, so
/// a value from outside cannot become a header of its own.
struct HttpRequest {
    QByteArray method; ///< "GET", "POST", "PUT"; a POST or PUT without a body has the length 0.
    QString url;       ///< http or https, without user or password.
    HttpHeaders headers;
    std::optional<QByteArray> body;
    HttpLimits limits;
};

struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// Why there is no reply. `description` is a sentence for the person.
struct TransportFailure {
    enum class Kind {
        TimedOut,       ///< Any limit of the exchange, connecting and looking up included.
        Network,        ///< Not found, refused, lost, insecure: `description` says which.
        InvalidReply,   ///< What came back is no HTTP reply, or is larger than is accepted.
        InvalidAddress, ///< The text is no address; nothing was sent.
    };
    Kind kind;
    QString description;
};

using HttpOutcome = Result<HttpReply, TransportFailure>;

} // namespace velmo
