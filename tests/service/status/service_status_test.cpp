#include "base/json.h"
#include "service/http/http_client.h"
#include "service/status/service_status_client.h"
#include "service/status/service_watch.h"
#include "support/completion_probe.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"
#include "support/scripted_server.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

class ServiceStatusTest : public ::testing::Test {
protected:
    template <class Value, class Ask>
    static StatusResult<Value> answerTo(Ask ask) {
        testing::CompletionProbe<StatusResult<Value>> probe;
        ask(probe.callback());
        return probe.outcome();
    }

    StatusResult<ServiceHealth> health() {
        return answerTo<ServiceHealth>([this](const auto &completion) { client.health(completion); });
    }

    /// What is under way comes to its end.
    void settle() {
        http.waitUntilIdle();
        queue.runPosted();
    }

    testing::ScriptedServer server;
    testing::ManualMainQueue queue;
    HttpClient http;
    ServiceStatusClient client{*ServiceOrigin::parse(server.origin()), http};
};

TEST_F(ServiceStatusTest, ReadsWhatTheServiceSays) {
    server.react(
        "/health",
        {testing::reply(200, R"({"status":"ok","since":"2026-11-25T20:18:00Z","engine":"Whisper",)"
                             R"("model":"base","languages":["en","no",7],"languageModel":"llama3"})"),
         testing::reply(200, R"({"engine":"server","model":null,"languageModel":null})")});
    const auto whisper = health();
    ASSERT_TRUE(whisper);
    EXPECT_EQ(*whisper, (ServiceHealth{Date(1795637880s), u"Whisper"_s, u"base"_s,
                                       QStringList{u"en"_s, u"no"_s}, u"llama3"_s}));
    const auto other = health();
    EXPECT_EQ(*other, (ServiceHealth{std::nullopt, u"server"_s, {}, std::nullopt, {}}));

    server.answer(
        "/api/models", 200,
        R"({"models":[{"name":"base","bytes":147951465,"languages":"99 languages","installed":true,)"
        R"("inUse":true,"source":"here"},3],"download":{"name":"small","received":12,"bytes":34,)"
        R"("bytesPerSecond":5.5},"failure":"The disk is full."})");
    const auto models = answerTo<SpeechModels>(
        [this](const auto &completion) { client.change(ModelWish::Cancel, u"small"_s, completion); });
    ASSERT_TRUE(models);
    EXPECT_EQ(*models, (SpeechModels{{{u"base"_s, 147951465, u"99 languages"_s, true, true, u"here"_s}},
                                     ModelDownload{u"small"_s, 12, 34, 5.5},
                                     u"The disk is full."_s}));

    server.answer(
        "/api/language-model", 200,
        R"({"address":"http://a","found":[{"name":"Ollama","address":"http://b","models":["x"]}]})");
    const auto chosen = answerTo<LanguageModels>([this](const auto &completion) {
        client.use({u"http://a"_s, QString()}, completion);
    });
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, (LanguageModels{{u"http://a"_s, {}}, {{u"Ollama"_s, u"http://b"_s, {u"x"_s}}}}));
    EXPECT_EQ(server.requests()[2].method + server.requests()[2].body, R"(POST{"cancel":"small"})");
    EXPECT_EQ(server.requests()[3].method + server.requests()[3].body, R"(PUT{"address":"http://a"})");
}

TEST_F(ServiceStatusTest, TellsSilenceFromARefusal) {
    const struct {
        testing::Reaction reaction;
        bool isSilent;
        QString description;
    } rows[] = {
        {testing::reply(503, R"({"error":"The engine is loading."})"), false, u"The engine is loading."_s},
        {testing::reply(404, "no"), false, u"The service answers with an error (404)."_s},
        {testing::reply(200, "<html>"), false, u"The service answers with something else."_s},
        {{"x\r\n\r\n", testing::Reaction::Then::Close},
         false,
         u"The server's reply could not be understood."_s},
        {{{}, testing::Reaction::Then::Close}, true, u"The connection was lost."_s},
    };
    for (const auto &row : rows) {
        server.react("/api/models", {row.reaction});
        const auto answer =
            answerTo<SpeechModels>([this](const auto &completion) { client.models(completion); });
        ASSERT_FALSE(answer);
        EXPECT_EQ(answer.error().isSilent, row.isSilent) << row.reaction.bytes.toStdString();
        EXPECT_EQ(answer.error().description, row.description);
    }
}

TEST_F(ServiceStatusTest, IsWatchedWhileSomebodyLooks) {
    ServiceWatch watch(client, queue);
    int changes = 0;
    QObject::connect(&watch, &ServiceWatch::changed, [&] { ++changes; });
    server.react("/health", {testing::reply(200, R"({"engine":"Whisper"})"),
                             testing::reply(200, R"({"engine":"Whisper"})"),
                             {{}, testing::Reaction::Then::Close}});
    EXPECT_TRUE(server.requests().empty()) << "nobody wants to know";
    auto page = watch.look();
    const auto another = watch.look();
    settle();
    EXPECT_EQ(watch.standing(), ServiceWatch::Standing::Answers);
    EXPECT_TRUE(watch.lacksLanguageModel());
    queue.advance(1500ms);
    settle();
    EXPECT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(changes, 1) << "the same again is no change";

    queue.advance(1500ms);
    settle();
    const Date lost = queue.now();
    queue.advance(1500ms);
    settle();
    EXPECT_EQ(watch.standing(), ServiceWatch::Standing::Silent);
    EXPECT_EQ(watch.since(), lost);
    EXPECT_EQ(watch.failure(), u"The connection was lost."_s);
    EXPECT_FALSE(watch.lacksLanguageModel()) << "nothing is known";
    page.reset();
    EXPECT_EQ(queue.pendingTimers(), 1U);
}

} // namespace velmo
