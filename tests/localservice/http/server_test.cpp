#include "localservice/http/server.h"

#include "localservice/http/raw_connection.h"
#include "localservice/http/running_server.h"

#include <gtest/gtest.h>
#include <latch>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::errorOf;
using testing::RawConnection;
using testing::RunningServer;

namespace {

Endpoint echo() {
    return {"POST", "/echo", [](const Request &request) {
                return Reply{200, {{u"length"_s, request.body.size()}}};
            }};
}

Endpoint hello() {
    return {"GET", "/hello", [](const Request &) { return Reply{200, {}}; }};
}

QByteArray head(const QByteArray &firstLine, const QByteArray &headers) {
    return firstLine + " HTTP/1.1\r\nHost: localhost\r\n" + headers + "\r\n";
}

} // namespace

TEST(Server, AnswersEveryRefusalInJson) {
    const RunningServer server({echo(), hello()});
    const std::tuple<const char *, QByteArray, int> cases[] = {
        {"unknown address", head("GET /nothing", ""), 404},
        {"unknown address with a query", head("GET /hellothere?x=/hello", ""), 404},
        {"other method", head("DELETE /hello", ""), 405},
        {"unknown method", head("BREW /hello", ""), 400},
        {"no HTTP", "hello\r\n\r\n", 400},
        {"preflight", head("OPTIONS /echo", "Origin: http://localhost\r\n"), 405},
        {"compressed", head("POST /echo", "Content-Encoding: gzip\r\nContent-Length: 1\r\n") + "x", 415},
        {"odd length", head("POST /echo", "Content-Length: many\r\n"), 400},
        {"negative length", head("POST /echo", "Content-Length: -1\r\n"), 400},
        {"odd transfer", head("POST /echo", "Transfer-Encoding: gzip\r\n"), 400},
        {"foreign host", "GET /hello HTTP/1.1\r\nHost: evil.example\r\n\r\n", 403},
        {"no host", "GET /hello HTTP/1.1\r\n\r\n", 403},
        {"foreign origin", head("POST /echo", "Origin: http://evil.example\r\nContent-Length: 0\r\n"), 403},
        {"endless address", head("GET /" + QByteArray(9000, 'x'), ""), 414},
        {"ranges", head("GET /hello", "Range: bytes=" + QByteArray(8000, '1') + "\r\n"), 416},
    };
    for (const auto &[name, request, status] : cases) {
        RawConnection connection(server.port());
        connection.send(request);
        const QByteArray reply = connection.readAll();
        EXPECT_TRUE(reply.startsWith("HTTP/1.1 " + QByteArray::number(status))) << name << reply.data();
        EXPECT_TRUE(reply.contains("\r\n\r\n{\"error\":\"")) << name << reply.data();
    }
}

TEST(Server, TakesRequestsOfThisMachine) {
    const RunningServer server({echo(), hello()});
    auto client = server.client();
    EXPECT_EQ(client.Get("/hello", {{"Origin", "http://localhost:3000"}})->status, 200);
    EXPECT_EQ(client.Head("/hello")->status, 200);
    // A POST without a body and without a length ends with its headers.
    RawConnection connection(server.port());
    connection.send(head("POST /echo", ""));
    EXPECT_TRUE(connection.readAll().endsWith("{\"length\":0}"));
}

TEST(Server, SendsPagesAndHeaders) {
    const RunningServer server({{"GET", "/page", [](const Request &request) {
                                     return Reply{303,
                                                  {},
                                                  {{"Location", "velmo://x"}},
                                                  request.isFromLoopback ? request.query : "from afar"};
                                 }}});
    auto client = server.client();
    const auto reply = client.Get("/page?a=%20b&c");
    EXPECT_EQ(reply->status, 303);
    EXPECT_EQ(reply->get_header_value("Location"), "velmo://x");
    EXPECT_EQ(reply->get_header_value("Content-Type"), "text/html; charset=utf-8");
    EXPECT_EQ(reply->get_header_value("Cache-Control"), "no-store");
    EXPECT_EQ(reply->body, "a=%20b&c");
}

TEST(Server, LimitsTheBody) {
    ServerLimits limits;
    limits.body = 100'000;
    const RunningServer server({echo()}, limits);
    auto client = server.client();
    const auto post = [&client](size_t size) {
        return client.Post("/echo", std::string(size, 'x'), "text/plain");
    };
    EXPECT_EQ(post(100'000)->status, 200);
    EXPECT_EQ(post(100'001)->status, 413);
    EXPECT_FALSE(errorOf(*post(20'000'000)).isEmpty()) << "the reply gets through to a client still sending";

    const auto chunked = client.Post(
        "/echo",
        [sent = 0](size_t, httplib::DataSink &sink) mutable {
            const std::string piece(50'000, 'x');
            return ++sent > 3 ? (sink.done(), true) : sink.write(piece.data(), piece.size());
        },
        "text/plain");
    EXPECT_EQ(chunked->status, 413);

    RawConnection asking(server.port());
    asking.send(head("POST /echo", "Content-Length: 100001\r\nExpect: 100-continue\r\n"));
    EXPECT_TRUE(asking.readAll().startsWith("HTTP/1.1 413")) << "before the body is sent";
}

TEST(Server, LimitsTheHeaders) {
    ServerLimits limits;
    limits.body = 0;
    const RunningServer server({hello()}, limits);
    RawConnection connection(server.port());
    connection.send("GET /hello HTTP/1.1\r\nHost: localhost\r\n");
    const QByteArray header = "X: " + QByteArray(1000, 'x') + "\r\n";
    constexpr int mostSent = 50'000;
    int sent = 0;
    while (sent < mostSent && !connection.waitForReply({}) && connection.send(header))
        ++sent;
    EXPECT_LT(sent, mostSent) << "refused long before 50 MB";
    EXPECT_TRUE(connection.readAll().startsWith("HTTP/1.1 400"));
}

TEST(Server, IsNotBlockedByStalledClients) {
    const RunningServer server({hello()});
    std::vector<std::unique_ptr<RawConnection>> stalled;
    for (int count = 0; count < 100; ++count) {
        stalled.push_back(std::make_unique<RawConnection>(server.port()));
        stalled.back()->send(count % 2 ? "POST /hello HTTP/1.1\r\nContent-Le" : "");
    }
    EXPECT_EQ(server.client().Get("/hello")->status, 200);
}

TEST(Server, EndsARequestThatTricklesIn) {
    ServerLimits limits;
    limits.connection.receive = std::chrono::milliseconds(300);
    limits.connection.linger = std::chrono::milliseconds(1);
    const RunningServer server({echo()}, limits);
    RawConnection connection(server.port());
    connection.send(head("POST /echo", "Content-Length: 100000\r\n"));
    // Never silent for longer than the idle limit, so only the limit of the whole request can end it.
    while (!connection.waitForReply(std::chrono::milliseconds(10)))
        connection.send("x");
    EXPECT_TRUE(connection.readAll().startsWith("HTTP/1.1 408"));
}

TEST(Server, AnswersWhatIsUnderWayWhenItStops) {
    std::latch begun(1);
    std::latch letGo(1);
    const Endpoint slow{"GET", "/slow", [&](const Request &) {
                            begun.count_down();
                            letGo.wait();
                            return Reply{200, {{u"answer"_s, 42}}};
                        }};
    ServerLimits limits;
    limits.connection.afterStop = std::chrono::milliseconds(1);
    RunningServer server({slow}, limits);
    RawConnection running(server.port());
    RawConnection stalled(server.port());
    running.send(head("GET /slow", ""));
    stalled.send("GET /slow HTT");
    begun.wait();

    std::thread stopping([&server] { server.stop(); });
    EXPECT_TRUE(stalled.readAll().isEmpty());
    letGo.count_down();
    EXPECT_TRUE(running.readAll().endsWith("{\"answer\":42}"));
    stopping.join();
}

TEST(Server, TurnsAnExceptionIntoARefusal) {
    const RunningServer server({{"GET", "/bad", [](const Request &) -> Reply { throw std::bad_alloc(); }}});
    const auto reply = server.client().Get("/bad");
    EXPECT_EQ(reply->status, 500);
    EXPECT_FALSE(errorOf(*reply).isEmpty());
}

} // namespace velmo::localservice
