#include "localservice/speech/endpoints.h"

#include "localservice/http/running_server.h"
#include "localservice/speech/engine_pool.h"
#include "localservice/speech/live_recordings.h"
#include "localservice/speech/pocketsphinx/pocketsphinx_engine.h"
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

/// The service with an engine.
class Service {
public:
    explicit Service(EngineKind engine) : m_engines(std::move(engine)) {}

    httplib::Result post(const testing::UploadForm &form,
                         const httplib::Headers &headers = testing::uploadHeaders()) {
        auto client = m_server.client();
        client.set_read_timeout(std::chrono::seconds(60));
        return client.Post("/api/transcribe", headers, form.body().toStdString(),
                           form.contentType.toStdString());
    }
    [[nodiscard]] int health() const { return m_server.client().Get("/health")->status; }

private:
    EnginePool m_engines;
    LiveRecordings m_recordings;
    testing::RunningServer m_server{{transcribeEndpoint(m_engines, m_recordings), healthEndpoint(m_engines)}};
};

/// As long as a sentence.
QByteArray silence() {
    QByteArray file = spoken(u"as long as a sentence"_s);
    constexpr qsizetype header = 44;
    std::fill(file.begin() + header, file.end(), '\0');
    return file;
}

} // namespace

// One test, as the engine takes seconds to get ready.
TEST(Transcribe, UnderstandsClearEnglishAndRefusesWhatItCannotDo) {
    Service service(pocketSphinxEngines(QStringLiteral(VELMO_SPEECH_MODEL_DIRECTORY)));
    for (const char *sentence : {"This is a test of the speech recognition system.",
                                 "The meeting will start at ten in the morning."}) {
        const QByteArray audio = spoken(QString::fromLatin1(sentence));
        ASSERT_FALSE(audio.isEmpty()) << "flite is not installed";
        const auto reply = service.post(uploadForm(audio));
        ASSERT_EQ(reply->status, 200) << reply->body;
        EXPECT_EQ(objectOf(*reply),
                  (QJsonObject{{u"text"_s, QLatin1StringView(sentence)}, {u"detectedLanguage"_s, u"en"_s}}));
    }
    EXPECT_EQ(service.health(), 200);

    const auto nothing = service.post(uploadForm(silence()));
    ASSERT_EQ(nothing->status, 200) << nothing->body;
    EXPECT_EQ(objectOf(*nothing).value(u"text"_s), QString());

    const auto noEnglish = service.post(uploadForm(silence(), R"(["no","sv"])"));
    EXPECT_EQ(noEnglish->status, 422);
    EXPECT_TRUE(errorOf(*noEnglish).contains(u"--speech-url"));
    EXPECT_EQ(service.post(uploadForm("this is no sound"))->status, 422);
}

TEST(Transcribe, NamesTheHeaderAtFault) {
    EngineKind none;
    none.make = []() -> Result<std::unique_ptr<SpeechEngine>, QString> { return failed(u"None."_s); };
    Service service(std::move(none));
    for (const char *name : {"X-Device-Id", "X-Mode", "X-App-Version", "X-Source"}) {
        auto headers = testing::uploadHeaders();
        headers.erase(name);
        const auto reply = service.post(uploadForm("x"), headers);
        EXPECT_EQ(reply->status, 400);
        EXPECT_TRUE(errorOf(*reply).contains(QLatin1StringView(name))) << reply->body;
    }
    auto form = uploadForm("x");
    form.parts.removeLast();
    const auto reply = service.post(form);
    EXPECT_EQ(reply->status, 400);
    EXPECT_TRUE(errorOf(*reply).contains(u"source")) << reply->body;
}

} // namespace velmo::localservice
