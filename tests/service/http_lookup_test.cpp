#include "service/http_client.h"

#include "support/completion_probe.h"
#include "support/scripted_server.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <latch>
#include <netdb.h>

// A name look-up that does not come back. The look-up of the C library is replaced for one name.

namespace {

std::latch &release() {
    static std::latch latch(1);
    return latch;
}

} // namespace

extern "C" int getaddrinfo(const char *name, const char *service, const addrinfo *req, addrinfo **pai) {
    if (name != nullptr && std::string_view(name) == "slow.velmo.example") {
        release().wait();
        return EAI_NONAME;
    }
    using Lookup = int (*)(const char *, const char *, const addrinfo *, addrinfo **);
    static const auto next = reinterpret_cast<Lookup>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(name, service, req, pai);
}

namespace velmo {

namespace {

TEST(HttpLookup, ThatHangsEndsInTheTimeoutAndHoldsUpNobody) {
    testing::ScriptedServer server;
    server.answer("/", 200, "{}");
    testing::CompletionProbe<HttpOutcome> whole;
    testing::CompletionProbe<HttpOutcome> idle;
    testing::CompletionProbe<HttpOutcome> atTheEnd;
    const QString slow = QStringLiteral("https://slow.velmo.example");
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
    release().count_down();
}

} // namespace

} // namespace velmo
