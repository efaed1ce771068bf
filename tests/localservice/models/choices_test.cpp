#include "localservice/chat/endpoints.h"
#include "localservice/chat/language_model_choice.h"
#include "localservice/http/running_server.h"
#include "localservice/models/endpoints.h"
#include "localservice/models/model_downloads.h"
#include "service/http/http_client.h"
#include "support/scripted_server.h"
#include "support/wait_until.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using testing::objectOf;
using testing::RunningServer;

/// What a person can choose in Velmo's settings, over the service's own interface.
class ChoicesTest : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const char *name) const {
        return m_folder.filePath(QString::fromLatin1(name));
    }

    QJsonObject get(const RunningServer &server, const char *address) {
        return objectOf(*server.client().Get(address));
    }

    QTemporaryDir m_folder;
    HttpClient m_http;
};

TEST_F(ChoicesTest, ModelsAreListedAndFetchedAndAFailureSaysWhy) {
    velmo::testing::ScriptedServer publisher;
    publisher.answer("/tiny", 200, "this is no model");
    const ModelStore store(path("models"), {});
    ModelDownloads downloads(store, publisher.origin() + u"/tiny"_s);
    const RunningServer server(modelEndpoints(store, downloads));
    const QJsonObject models = get(server, "/api/models");
    EXPECT_GE(models[u"models"].toArray().size(), 10);
    EXPECT_TRUE(models[u"download"].isNull());
    EXPECT_TRUE(models[u"models"].toArray().last()[u"page"].toString().startsWith(u"https:"));
    EXPECT_FALSE(models[u"models"].toArray().at(0)[u"installed"].toBool());

    struct Row {
        const char *wish;
        int status;
    };
    for (const Row &row : {Row{R"({"get":"nobody"})", 404}, Row{R"({"get":"nb-whisper-base"})", 422},
                           Row{R"({"use":"tiny"})", 404}, Row{R"({})", 400}, Row{"[]", 400}})
        EXPECT_EQ(server.client().Post("/api/models", row.wish, "application/json")->status, row.status)
            << row.wish;

    EXPECT_EQ(server.client().Post("/api/models", R"({"get":"tiny"})", "application/json")->status, 200);
    EXPECT_TRUE(velmo::testing::waitUntil([&] { return get(server, "/api/models").contains(u"failure"); }));
    EXPECT_TRUE(get(server, "/api/models")[u"failure"].toString().contains(u"checksum"_s));
    EXPECT_TRUE(store.installed().isEmpty());
}

TEST_F(ChoicesTest, TheLanguageModelIsKeptForItsOwnerAlone) {
    const auto put = [](const RunningServer &server, const char *body) {
        return server.client().Put("/api/language-model", body, "application/json");
    };
    {
        LanguageModelChoice choice(m_http, path("service/language-model.json"));
        const RunningServer server(languageModelEndpoints(m_http, choice));
        EXPECT_FALSE(get(server, "/api/language-model").contains(u"address"));
        EXPECT_FALSE(choice.client());
        EXPECT_EQ(put(server, R"({"address":"ftp://here"})")->status, 422);
        const auto reply = put(server, R"({"address":"http://127.0.0.1:11434","model":"llama3"})");
        EXPECT_EQ(objectOf(*reply)[u"model"].toString(), u"llama3"_s) << reply->body;
    }
    EXPECT_EQ(QFileInfo(path("service/language-model.json")).permissions() &
                  (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
              QFile::Permissions());
    LanguageModelChoice choice(m_http, path("service/language-model.json"));
    EXPECT_EQ(choice.chosen().address, u"http://127.0.0.1:11434"_s);
    EXPECT_TRUE(choice.client());
    const RunningServer server(languageModelEndpoints(m_http, choice));
    EXPECT_EQ(put(server, "{}")->status, 200);
    EXPECT_FALSE(choice.client());
    choice.fix({u"http://127.0.0.1:1"_s, {}}, nullptr);
    EXPECT_EQ(put(server, "{}")->status, 409);
}

} // namespace

} // namespace velmo::localservice
