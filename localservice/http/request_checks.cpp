#include "localservice/http/request_checks.h"

#include "localservice/http/this_machine.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

bool hasBody(const httplib::Request &request) {
    return request.method != "GET" && request.method != "HEAD" && request.method != "OPTIONS";
}

} // namespace

std::optional<Refusal> refusalForSender(const httplib::Request &request) {
    if (!namesThisMachine(request.get_header_value("Host"), request.local_addr))
        return Refusal{403, u"The Host header does not name this machine."_s};
    if (request.has_header("Origin") &&
        !isOriginOfThisMachine(request.get_header_value("Origin"), request.local_addr))
        return Refusal{403, u"Requests of pages from other machines are refused."_s};
    return std::nullopt;
}

std::optional<Refusal> refusalForBody(const httplib::Request &request, qint64 limit) {
    if (!hasBody(request))
        return std::nullopt;
    // A compressed body of a few bytes can unfold into any size.
    if (request.has_header("Content-Encoding"))
        return Refusal{415, u"Compressed requests (Content-Encoding) are not taken."_s};
    if (request.has_header("Transfer-Encoding")) {
        if (request.get_header_value("Transfer-Encoding") != "chunked")
            return Refusal{400, u"The Transfer-Encoding header is not \"chunked\"."_s};
        return std::nullopt; // counted as it arrives
    }
    bool isNumber = false;
    const auto length =
        QByteArray::fromStdString(request.get_header_value("Content-Length")).toLongLong(&isNumber);
    if (!isNumber || length < 0)
        return Refusal{400, u"The Content-Length header is no number."_s};
    if (length > limit)
        return Refusal{413, sentenceForStatus(413)};
    return std::nullopt;
}

QString sentenceForStatus(int status) {
    switch (status) {
    case 400:
        return u"This is no valid HTTP request."_s;
    case 413:
        return u"The request is too large."_s;
    case 414:
        return u"The address of the request is too long."_s;
    case 500:
        return u"The service failed to answer this request."_s;
    default:
        return u"The request was refused."_s;
    }
}

} // namespace velmo::localservice
