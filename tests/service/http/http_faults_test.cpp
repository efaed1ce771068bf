#include "service/http/http_client.h"

#include "support/completion_probe.h"
#include "support/scripted_server.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Everything a server can do to a request. Whatever it does, the completion comes once and the server has seen
// the request once.

namespace velmo {

namespace {

using testing::CompletionProbe;
using testing::Reaction;
using testing::ScriptedServer;
using Kind = TransportFailure::Kind;
using Then = Reaction::Then;
using namespace std::chrono_literals;

constexpr HttpLimits kAmple{30s, std::nullopt};
constexpr HttpLimits kShortIdle{30s, 300ms};
constexpr HttpLimits kShortWhole{400ms, std::nullopt};

struct Fault {
    const char *name;
    Reaction reaction;
    HttpLimits limits;
    TransportFailure failure;

    friend void PrintTo(const Fault &fault, std::ostream *out) { *out << fault.name; }
};

Fault lost(const char *name, const QByteArray &bytes, Then then,
           Reaction::Reads reads = Reaction::Reads::All) {
    return {name, {bytes, then, reads}, kAmple, {Kind::Network, u"The connection was lost."_s}};
}

Fault late(const char *name, const Reaction &reaction, const HttpLimits &limits = kShortIdle) {
    return {name, reaction, limits, {Kind::TimedOut, u"The server did not answer in time."_s}};
}

Fault unclear(const char *name, const QByteArray &bytes, Then then = Then::Close) {
    return {
        name, {bytes, then}, kAmple, {Kind::InvalidReply, u"The server's reply could not be understood."_s}};
}

const QByteArray kHead = "HTTP/1.1 200 OK\r\n";
const QByteArray kHalfABody = kHead + "Content-Length: 9\r\n\r\n{\"te";
const QByteArray kChunked = kHead + "Transfer-Encoding: chunked\r\n\r\n";

const std::vector<Fault> kFaults = {
    lost("ClosedBeforeReply", "", Then::Close),
    lost("ResetBeforeReply", "", Then::Reset),
    lost("ClosedBeforeTheBodyIsRead", "", Then::Reset, Reaction::Reads::Head),
    lost("ResetInsideTheHead", kHead + "Content-", Then::Reset),
    lost("ResetInsideTheBody", kHalfABody, Then::Reset),
    lost("TruncatedBody", kHalfABody, Then::Close),
    lost("TruncatedChunk", kChunked + "5\r\n{\"te", Then::Close),
    lost("BrokenChunk", kChunked + "zz\r\n{}", Then::Hold),
    late("StalledBeforeReply", {"", Then::Hold}),
    late("StalledInsideTheHead", {kHead, Then::Hold}),
    late("StalledInsideTheBody", {kHalfABody, Then::Hold}),
    late("StalledWithoutReading", {"", Then::Deaf, Reaction::Reads::Head}),
    late("Trickling",
         {kHead + "Content-Length: 100000\r\n\r\n" + QByteArray(1000, ' '), Then::Hold, Reaction::Reads::All,
          5ms},
         kShortWhole),
    unclear("NoStatusLine", "{\"text\":\"hei\"}"),
    unclear("Garbage", QByteArray("\x00\xff\x16\x03\x01garbage\r\n\r\n", 15)),
    unclear("WrongVersion", "HTTP/7.3 200 OK\r\n\r\n"),
    unclear("StatusOfTwoDigits", "HTTP/1.1 20 OK\r\n\r\n"),
    unclear("NegativeLength", kHead + "Content-Length: -5\r\n\r\nhello"),
    unclear("HugeByItsWord", kHead + "Content-Length: 16777217\r\n\r\n", Then::Hold),
    unclear("HugeWithoutAWord", kHead + "\r\n" + QByteArray(16777217, ' '), Then::Hold),
    unclear("EndlessHead", kHead + QByteArray("X: 0123456789\r\n").repeated(20000), Then::Hold),
    unclear("EndlessHeaderLine", kHead + "X: " + QByteArray(400'000, 'x'), Then::Hold),
    unclear("EndlessProvisionalReplies", QByteArray("HTTP/1.1 103 Early Hints\r\n\r\n").repeated(20000),
            Then::Hold),
};

class HttpFault : public ::testing::TestWithParam<Fault> {};

TEST_P(HttpFault, EndsInOneFailureAfterOneRequest) {
    const Fault &fault = GetParam();
    for (const QByteArray method : {"GET", "POST", "PUT"}) {
        SCOPED_TRACE(method.constData());
        ScriptedServer server;
        server.react("/", {fault.reaction});
        const std::optional<QByteArray> body =
            method == "GET" ? std::nullopt : std::optional(QByteArray(3'000'000, 'x'));
        CompletionProbe<HttpOutcome> probe;
        {
            HttpClient client;
            client.send({method, server.origin() + u'/', {}, body, fault.limits}, probe.callback());
            const HttpOutcome outcome = probe.outcome();
            ASSERT_FALSE(outcome.has_value()) << outcome->status;
            EXPECT_EQ(outcome.error().kind, fault.failure.kind);
            EXPECT_EQ(outcome.error().description, fault.failure.description);
        }
        EXPECT_EQ(probe.calls(), 1);
        EXPECT_EQ(server.requests().size(), 1U);
        EXPECT_EQ(server.connections(), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, HttpFault, ::testing::ValuesIn(kFaults),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace

} // namespace velmo
