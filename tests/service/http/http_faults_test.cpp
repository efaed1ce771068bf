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

const QString kLost = u"The connection was lost."_s;
const QString kLate = u"The server did not answer in time."_s;
const QString kUnclear = u"The server's reply could not be understood."_s;

struct Fault {
    const char *name;
    Reaction reaction;
    HttpLimits limits;
    Kind kind;
    QString description;
};

const std::vector<Fault> kFaults = {
    {"ClosedBeforeReply", {"", Then::Close}, kAmple, Kind::Network, kLost},
    {"ResetBeforeReply", {"", Then::Reset}, kAmple, Kind::Network, kLost},
    {"ClosedBeforeTheBodyIsRead", {"", Then::Reset, Reaction::Reads::Head}, kAmple, Kind::Network, kLost},
    {"ResetInsideTheHead", {"HTTP/1.1 200 OK\r\nContent-", Then::Reset}, kAmple, Kind::Network, kLost},
    {"ResetInsideTheBody",
     {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{\"te", Then::Reset},
     kAmple,
     Kind::Network,
     kLost},
    {"TruncatedBody",
     {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{\"te", Then::Close},
     kAmple,
     Kind::Network,
     kLost},
    {"TruncatedChunk",
     {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\n{\"te", Then::Close},
     kAmple,
     Kind::Network,
     kLost},
    {"BrokenChunk",
     {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n{}", Then::Hold},
     kAmple,
     Kind::Network,
     kLost},
    {"StalledBeforeReply", {"", Then::Hold}, kShortIdle, Kind::TimedOut, kLate},
    {"StalledInsideTheHead", {"HTTP/1.1 200 OK\r\n", Then::Hold}, kShortIdle, Kind::TimedOut, kLate},
    {"StalledInsideTheBody",
     {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{\"te", Then::Hold},
     kShortIdle,
     Kind::TimedOut,
     kLate},
    {"StalledWithoutReading", {"", Then::Deaf, Reaction::Reads::Head}, kShortIdle, Kind::TimedOut, kLate},
    {"Trickling",
     {"HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" + QByteArray(1000, ' '), Then::Hold,
      Reaction::Reads::All, 5ms},
     kShortWhole,
     Kind::TimedOut,
     kLate},
    {"NoStatusLine", {"{\"text\":\"hei\"}", Then::Close}, kAmple, Kind::InvalidReply, kUnclear},
    {"Garbage",
     {QByteArray("\x00\xff\x16\x03\x01garbage\r\n\r\n", 15), Then::Close},
     kAmple,
     Kind::InvalidReply,
     kUnclear},
    {"WrongVersion", {"HTTP/7.3 200 OK\r\n\r\n", Then::Close}, kAmple, Kind::InvalidReply, kUnclear},
    {"StatusOfTwoDigits", {"HTTP/1.1 20 OK\r\n\r\n", Then::Close}, kAmple, Kind::InvalidReply, kUnclear},
    {"NegativeLength",
     {"HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nhello", Then::Close},
     kAmple,
     Kind::InvalidReply,
     kUnclear},
    {"HugeByItsWord",
     {"HTTP/1.1 200 OK\r\nContent-Length: 16777217\r\n\r\n", Then::Hold},
     kAmple,
     Kind::InvalidReply,
     kUnclear},
    {"HugeWithoutAWord",
     {"HTTP/1.1 200 OK\r\n\r\n" + QByteArray(16777216, ' ') + ' ', Then::Hold},
     kAmple,
     Kind::InvalidReply,
     kUnclear},
    {"EndlessHead",
     {"HTTP/1.1 200 OK\r\n" + QByteArray("X: 0123456789\r\n").repeated(20000), Then::Hold},
     kAmple,
     Kind::InvalidReply,
     kUnclear},
    {"EndlessHeaderLine",
     {"HTTP/1.1 200 OK\r\nX: " + QByteArray(400'000, 'x'), Then::Hold},
     kAmple,
     Kind::InvalidReply,
     kUnclear},
    {"EndlessProvisionalReplies",
     {QByteArray("HTTP/1.1 103 Early Hints\r\n\r\n").repeated(20000), Then::Hold},
     kAmple,
     Kind::InvalidReply,
     kUnclear},
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
            EXPECT_EQ(outcome.error().kind, fault.kind);
            EXPECT_EQ(outcome.error().description, fault.description);
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
