#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <memory>
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

/// A body that is sent while it comes to be, in chunks (RFC 9112, 7.1). Asked on the client's thread, a few times a
/// second and whenever `HttpClient::lookForMore` says so.
class GrowingBody : public Interface {
public:
    /// Copies what has come since, at most that much.
    /// @return how much; 0 while there is nothing more.
    [[nodiscard]] virtual qsizetype read(char *into, qsizetype most) = 0;

    /// Since when nothing more is added; `read` gives what is left of it. All limits of the exchange count from there:
    /// how long the body takes to come is nobody's fault.
    [[nodiscard]] virtual std::optional<std::chrono::steady_clock::time_point> wholeSince() const = 0;

    /// Whether nobody wants the exchange any more: it is ended, its outcome means nothing.
    [[nodiscard]] virtual bool isAbandoned() const = 0;
};

using HttpHeaders = std::vector<std::pair<QByteArray, QByteArray>>;

/// One exchange. Headers go out as given, in order; the client adds only Host, User-Agent and, where there is
/// or could be a body, Content-Length or Transfer-Encoding. Control characters cannot stand in a header and are left out of it, so
/// a value from outside cannot become a header of its own.
struct HttpRequest {
    QByteArray method; ///< "GET", "POST", "PUT"; a POST or PUT without a body has the length 0.
    QString url;       ///< http or https, without user or password.
    HttpHeaders headers;
    std::optional<QByteArray> body;
    HttpLimits limits;
    std::shared_ptr<GrowingBody> growingBody = {}; ///< In place of `body`, of a POST.
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
