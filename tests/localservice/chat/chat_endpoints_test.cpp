#include "localservice/chat/endpoints.h"

#include "base/json.h"
#include "localservice/http/running_server.h"
#include "service/http/http_client.h"
#include "support/scripted_server.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::errorOf;
using testing::objectOf;
using testing::RunningServer;
using velmo::testing::ScriptedServer;

namespace {

const QByteArray kPath = "/v1/chat/completions";

QByteArray completion(const QByteArray &content) {
    return R"({"choices": [{"message": {"role": "assistant", "content": ")" + content + R"("}}]})";
}

/// Both endpoints before a stub of a chat server.
class ChatEndpoints : public ::testing::Test {
protected:
    httplib::Result post(const char *path, const char *body) {
        return m_server.client().Post(path, body, "application/json");
    }

    /// What the model was asked last.
    QJsonObject lastQuestion() {
        return json::object(m_model.requests().back().body).value_or(QJsonObject());
    }

    ScriptedServer m_model;
    HttpClient m_http;
    const std::shared_ptr<const ChatClient> m_chat = std::make_shared<ChatClient>(
        m_http, OpenAiAddress{m_model.origin() + QString::fromLatin1(kPath), u"llama"_s, "secret"});
    RunningServer m_server{
        {processEndpoint([this] { return m_chat; }), normalizeEndpoint([this] { return m_chat; })}};
};

} // namespace

TEST_F(ChatEndpoints, RewriteUnderThePromptOfTheMode) {
    m_model.answer(kPath, 200, completion(" Dear Åse\\n"));

    const auto reply = post("/api/process", R"({"text": "hi åse", "systemPrompt": "Be formal."})");

    EXPECT_EQ(reply->status, 200);
    EXPECT_EQ(objectOf(*reply).value(u"text"_s), u"Dear Åse"_s);
    const QJsonObject question = lastQuestion();
    EXPECT_EQ(question.value(u"model"_s), u"llama"_s);
    EXPECT_EQ(json::compact(question.value(u"messages"_s).toArray()),
              R"([{"content":"Be formal.","role":"system"},{"content":"hi åse","role":"user"}])");
    EXPECT_EQ(m_model.requests().back().header("Authorization"), "Bearer secret");
}

TEST_F(ChatEndpoints, NormalizeToBokmal) {
    m_model.answer(kPath, 200, completion("<think>Hmm.</think>\\nJeg kommer."));

    const auto reply = post("/api/normalize-bokmal", R"({"text": "Eg kjem."})");

    EXPECT_EQ(objectOf(*reply).value(u"text"_s), u"Jeg kommer."_s);
    const QJsonArray messages = lastQuestion().value(u"messages"_s).toArray();
    EXPECT_TRUE(messages.at(0)[u"content"].toString().contains(u"Bokmål"));
    EXPECT_EQ(messages.at(1)[u"content"], u"Eg kjem."_s);
}

TEST_F(ChatEndpoints, NameThePieceAtFault) {
    struct Case {
        const char *path, *body;
        const char16_t *named;
    };
    for (const Case &row :
         {Case{"/api/process", "not JSON", u"JSON"}, Case{"/api/process", "[]", u"JSON object"},
          Case{"/api/process", R"({"systemPrompt": "x"})", u"\"text\" is missing"},
          Case{"/api/process", R"({"text": 1, "systemPrompt": "x"})", u"\"text\" is no string"},
          Case{"/api/process", R"({"text": "x"})", u"\"systemPrompt\" is missing"},
          Case{"/api/process", R"({"text": "x", "systemPrompt": null})", u"\"systemPrompt\" is no string"},
          Case{"/api/normalize-bokmal", "{}", u"\"text\" is missing"},
          Case{"/api/normalize-bokmal", R"({"text": ""})", u"\"text\" is empty"}}) {
        const auto reply = post(row.path, row.body);
        EXPECT_EQ(reply->status, 400);
        EXPECT_TRUE(errorOf(*reply).contains(QStringView(row.named))) << reply->body;
    }
    EXPECT_TRUE(m_model.requests().empty());
}

TEST_F(ChatEndpoints, AnswerWithoutTextIsAFailure) {
    for (const QByteArray &body : {completion(""), completion("<think>Hmm.</think>"), QByteArray("{}"),
                                   QByteArray(R"({"choices": []})")}) {
        m_model.answer(kPath, 200, body);
        EXPECT_EQ(post("/api/normalize-bokmal", R"({"text": "x"})")->status, 502) << body.constData();
    }
}

TEST(ChatEndpointsAlone, SayThatThereIsNoModel) {
    const RunningServer server(
        {processEndpoint([] { return nullptr; }), normalizeEndpoint([] { return nullptr; })});
    for (const char *path : {"/api/process", "/api/normalize-bokmal"}) {
        const auto reply = server.client().Post(path, "{}", "application/json");
        EXPECT_EQ(reply->status, 503);
        EXPECT_TRUE(errorOf(*reply).contains(u"--chat-url"));
    }
}

} // namespace velmo::localservice
