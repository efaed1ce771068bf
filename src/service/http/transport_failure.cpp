#include "service/http/transport_failure.h"

namespace velmo {

namespace {

using Kind = TransportFailure::Kind;

TransportFailure network(const QString &description) {
    return {Kind::Network, description};
}

TransportFailure invalidReply() {
    return {Kind::InvalidReply, QStringLiteral("The server's reply could not be understood.")};
}

} // namespace

TransportFailure timedOut() {
    return {Kind::TimedOut, QStringLiteral("The server did not answer in time.")};
}

TransportFailure connectionLost() {
    return network(QStringLiteral("The connection was lost."));
}

TransportFailure invalidAddress() {
    return {Kind::InvalidAddress, QStringLiteral("Invalid URL")};
}

TransportFailure failureOf(CURLcode code) {
    switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
        return timedOut();
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return network(QStringLiteral("The server could not be found."));
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
        return network(QStringLiteral("Could not connect to the server."));
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return network(QStringLiteral("No secure connection could be made."));
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
        return network(QStringLiteral("The exchange with the server failed."));
    }
}

} // namespace velmo
