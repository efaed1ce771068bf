#include "service/http/http_client.h"

#include "service/http/fake_lookup.h"
#include "support/completion_probe.h"
#include "support/scripted_server.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

TEST(HttpLookup, ThatHangsEndsInTheTimeoutAndHoldsUpNobody) {
    testing::ScriptedServer server;
    server.answer("/", 200, "{}");
    testing::CompletionProbe<HttpOutcome> whole;
    testing::CompletionProbe<HttpOutcome> idle;
    testing::CompletionProbe<HttpOutcome> atTheEnd;
    const QString slow = u"https://slow.velmo.example"_s;
    using namespace std::chrono_literals;
    {
        HttpClient client;
        client.send({"GET", slow, {}, {}, {200ms, {}}}, whole.callback());
        client.send({"GET", slow, {}, {}, {10min, 200ms}}, idle.callback());
        client.send({"GET", slow, {}, {}, {10min, {}}}, atTheEnd.callback());
        EXPECT_EQ(whole.outcome().error().kind, TransportFailure::Kind::TimedOut);
        EXPECT_EQ(idle.outcome().error().kind, TransportFailure::Kind::TimedOut);

        testing::CompletionProbe<HttpOutcome> other;
        client.send({"GET", server.origin(), {}, {}, {10min, {}}}, other.callback());
        EXPECT_TRUE(other.outcome());
    }
    EXPECT_EQ(atTheEnd.outcome().error().kind, TransportFailure::Kind::Network);
    testing::endSlowLookups();
}

} // namespace

} // namespace velmo
