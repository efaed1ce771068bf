#include "service/http/transport_failure.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using Kind = TransportFailure::Kind;

TransportFailure network(const QString &description) {
    return {Kind::Network, description};
}

TransportFailure invalidReply() {
    return {Kind::InvalidReply, u"The server's reply could not be understood."_s};
}

} // namespace

TransportFailure timedOut() {
    return {Kind::TimedOut, u"The server did not answer in time."_s};
}

TransportFailure connectionLost() {
    return network(u"The connection was lost."_s);
}

TransportFailure invalidAddress() {
    return {Kind::InvalidAddress, u"Invalid URL"_s};
}

TransportFailure failureOf(CURLcode code) {
    switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
        return timedOut();
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return network(u"The server could not be found."_s);
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
        return network(u"Could not connect to the server."_s);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return network(u"No secure connection could be made."_s);
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_PARTIAL_FILE:
    // The connection died before an answer, and libcurl was kept from sending the request again.
    case CURLE_SEND_FAIL_REWIND:
    case CURLE_ABORTED_BY_CALLBACK:
        return connectionLost();
    // Not HTTP: an HTTP/0.9 reply is libcurl's word for bytes without a status line.
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    // Larger than accepted: by its Content-Length, by what came (a receiver refused it), or a single header
    // line beyond libcurl's own bound.
    case CURLE_FILESIZE_EXCEEDED:
    case CURLE_WRITE_ERROR:
    case CURLE_OUT_OF_MEMORY:
        return invalidReply();
    default:
        return network(u"The exchange with the server failed."_s);
    }
}

} // namespace velmo
