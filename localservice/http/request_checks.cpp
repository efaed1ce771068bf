#include "localservice/http/request_checks.h"

#include "localservice/http/this_machine.h"

namespace velmo::localservice {

namespace {

bool hasBody(const httplib::Request &request) {
    return request.method != "GET" && request.method != "HEAD" && request.method != "OPTIONS";
}

} // namespace

std::optional<Refusal> refusalForSender(const httplib::Request &request) {
    if (!namesThisMachine(request.get_header_value("Host"), request.local_addr))
        return Refusal{403, QStringLiteral("The Host header does not name this machine.")};
    if (request.has_header("Origin") &&
        !isOriginOfThisMachine(request.get_header_value("Origin"), request.local_addr))
        return Refusal{403, QStringLiteral("Requests of pages from other machines are refused.")};
    return std::nullopt;
}

std::optional<Refusal> refusalForBody(const httplib::Request &request, qint64 limit) {
    if (!hasBody(request))
        return std::nullopt;
    // A compressed body of a few bytes can unfold into any size.
    if (request.has_header("Content-Encoding"))
        return Refusal{415, QStringLiteral("Compressed requests (Content-Encoding) are not taken.")};
    if (request.has_header("Transfer-Encoding")) {
        if (request.get_header_value("Transfer-Encoding") != "chunked")
            return Refusal{400, QStringLiteral("The Transfer-Encoding header is not \"chunked\".")};
        return std::nullopt; // counted as it arrives
    }
    bool isNumber = false;
    const auto length =
        QByteArray::fromStdString(request.get_header_value("Content-Length")).toLongLong(&isNumber);
    if (!isNumber || length < 0)
        return Refusal{400, QStringLiteral("The Content-Length header is no number.")};
    if (length > limit)
        return Refusal{413, sentenceForStatus(413)};
    return std::nullopt;
}

QString sentenceForStatus(int status) {
    switch (status) {
    case 400:
        return QStringLiteral("This is no valid HTTP request.");
    case 413:
        return QStringLiteral("The request is too large.");
    case 414:
        return QStringLiteral("The address of the request is too long.");
    case 500:
        return QStringLiteral("The service failed to answer this request.");
    default:
        return QStringLiteral("The request was refused.");
    }
}

} // namespace velmo::localservice
