#include "localservice/speech/endpoints.h"

#include "localservice/http/running_server.h"
#include "localservice/speech/pocketsphinx_engine.h"
#include "localservice/speech/spoken.h"
#include "localservice/speech/upload_form.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::errorOf;
using testing::objectOf;
using testing::spoken;
using testing::uploadForm;

namespace {

/// The service with the real embedded engine.
class Transcribe : public ::testing::Test {
protected:
    httplib::Result post(const testing::UploadForm &form,
                         const httplib::Headers &headers = testing::uploadHeaders()) {
        auto client = m_server.client();
        client.set_read_timeout(std::chrono::seconds(60));
        return client.Post("/api/transcribe", headers, form.body().toStdString(),
                           form.contentType.toStdString());
    }

    EnginePool m_engines{pocketSphinxEngines(QStringLiteral(VELMO_SPEECH_MODEL_DIRECTORY))};
    testing::RunningServer m_server{{transcribeEndpoint(m_engines), healthEndpoint(m_engines)}};
};

/// As long as a sentence.
QByteArray silence() {
    QByteArray file = spoken(u"as long as a sentence"_s);
    constexpr qsizetype header = 44;
    std::fill(file.begin() + header, file.end(), '\0');
    return file;
}

} // namespace

TEST_F(Transcribe, UnderstandsClearEnglish) {
    for (const char *sentence : {"This is a test of the speech recognition system.",
                                 "The meeting will start at ten in the morning."}) {
        const QByteArray audio = spoken(QString::fromLatin1(sentence));
        ASSERT_FALSE(audio.isEmpty()) << "flite is not installed";
        const auto reply = post(uploadForm(audio));
        ASSERT_EQ(reply->status, 200) << reply->body;
        EXPECT_EQ(objectOf(*reply),
                  (QJsonObject{{u"text"_s, QLatin1StringView(sentence)}, {u"detectedLanguage"_s, u"en"_s}}));
    }
    EXPECT_EQ(m_server.client().Get("/health")->status, 200);
}

TEST_F(Transcribe, AnswersSilenceWithAnEmptyText) {
    const auto reply = post(uploadForm(silence()));
    ASSERT_EQ(reply->status, 200) << reply->body;
    EXPECT_EQ(objectOf(*reply).value(u"text"_s), QString());
}

TEST_F(Transcribe, RefusesWhatTheEmbeddedEngineCannotDo) {
    const auto noEnglish = post(uploadForm(silence(), R"(["no","sv"])"));
    EXPECT_EQ(noEnglish->status, 422);
    EXPECT_TRUE(errorOf(*noEnglish).contains(u"--speech-url"));

    EXPECT_EQ(post(uploadForm("this is no sound"))->status, 422);
}

TEST_F(Transcribe, NamesTheHeaderAtFault) {
    for (const char *name : {"X-Device-Id", "X-Mode", "X-App-Version", "X-Source"}) {
        auto headers = testing::uploadHeaders();
        headers.erase(name);
        const auto reply = post(uploadForm("x"), headers);
        EXPECT_EQ(reply->status, 400);
        EXPECT_TRUE(errorOf(*reply).contains(QLatin1StringView(name))) << reply->body;
    }
    auto form = uploadForm("x");
    form.parts.removeLast();
    const auto reply = post(form);
    EXPECT_EQ(reply->status, 400);
    EXPECT_TRUE(errorOf(*reply).contains(u"source")) << reply->body;
}

} // namespace velmo::localservice
