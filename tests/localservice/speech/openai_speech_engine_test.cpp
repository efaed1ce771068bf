#include "localservice/speech/openai_speech_engine.h"

#include "localservice/speech/engine_pool.h"
#include "localservice/speech/language_names.h"
#include "service/http/http_client.h"
#include "support/scripted_server.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using velmo::testing::Reaction;
using velmo::testing::ScriptedServer;

namespace {

const QByteArray kPath = "/v1/audio/transcriptions";

Upload upload() {
    Upload upload;
    upload.audio = QByteArray("RIFF\0\r\n--sound", 14);
    upload.fileName = u"recording.wav"_s;
    upload.contentType = "audio/wav";
    upload.prompt = u"Tromsø, Åse, Øyvind"_s;
    upload.language = u"nb"_s;
    upload.languages = {u"nb"_s, u"en"_s};
    return upload;
}

/// The speech engines before a stub of the interface.
class OpenAiSpeech : public ::testing::Test {
protected:
    SpeechOutcome transcribe(bool detectLanguage = false) {
        EnginePool pool(openAiSpeechEngines(
            m_http,
            {{m_server.origin() + QString::fromLatin1(kPath), u"large-v3"_s, "secret"}, detectLanguage}));
        return pool.transcribe(upload());
    }

    ScriptedServer m_server;
    HttpClient m_http;
};

} // namespace

TEST_F(OpenAiSpeech, PassesTheUploadOn) {
    m_server.answer(kPath, 200, R"({"text": " Hei på deg.\n", "language": "norwegian", "segments": []})");

    const auto transcript = transcribe();

    ASSERT_TRUE(transcript) << transcript.error().sentence.toStdString();
    EXPECT_EQ(transcript->text, u"Hei på deg."_s);
    EXPECT_EQ(transcript->detectedLanguage, u"no"_s);
    const auto request = m_server.requests().at(0);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.header("Authorization"), "Bearer secret");
    for (const QByteArray &part :
         {QByteArray("name=\"file\"; filename=\"recording.wav\"\r\nContent-Type: audio/wav\r\n\r\n") +
              upload().audio + "\r\n",
          QByteArray("name=\"model\"\r\n\r\nlarge-v3\r\n"), QByteArray("name=\"language\"\r\n\r\nno\r\n"),
          QByteArray("name=\"prompt\"\r\n\r\nTromsø, Åse, Øyvind\r\n"),
          QByteArray("name=\"response_format\"\r\n\r\nverbose_json\r\n")})
        EXPECT_TRUE(request.body.contains(part)) << part.constData();
}

TEST_F(OpenAiSpeech, LetsTheServerDetectTheLanguage) {
    m_server.answer(kPath, 200, R"({"text": "Hello."})");
    const auto transcript = transcribe(true);
    ASSERT_TRUE(transcript);
    EXPECT_FALSE(transcript->detectedLanguage);
    EXPECT_FALSE(m_server.requests().at(0).body.contains("name=\"language\""));
}

TEST_F(OpenAiSpeech, TurnsFailuresIntoRefusals) {
    struct Case {
        int status;
        QByteArray body;
        const char16_t *named;
    };
    for (const Case &row :
         {Case{500, R"({"error": {"message": "out of memory"}})", u"out of memory"},
          Case{401, R"({"error": "bad key"})", u"bad key"},
          Case{422, R"({"detail": "no such model"})", u"no such model"}, Case{502, "<html>", u"502"},
          Case{200, "<html>", u"something else"}, Case{200, R"({"text": 7})", u"something else"}}) {
        m_server.answer(kPath, row.status, row.body);
        const auto outcome = transcribe();
        ASSERT_FALSE(outcome);
        EXPECT_EQ(outcome.error().status, 502);
        EXPECT_TRUE(outcome.error().sentence.contains(QStringView(row.named)))
            << outcome.error().sentence.toStdString();
    }
}

TEST(OpenAiServer, TellsUnreachableFromLate) {
    HttpClient http;
    const OpenAiServer unreachable(http, u"speech server"_s, {ScriptedServer::refusingOrigin(), {}, {}});
    EXPECT_EQ(unreachable.post("text/plain", "x", std::chrono::seconds(20)).error().status, 502);

    ScriptedServer server;
    server.react("/late", {Reaction{{}, Reaction::Then::Hold}});
    const OpenAiServer late(http, u"speech server"_s, {server.origin() + u"/late"_s, {}, {}});
    EXPECT_EQ(late.post("text/plain", "x", std::chrono::milliseconds(50)).error().status, 504);
}

TEST(OpenAiUrl, CompletesWhatAPersonWrites) {
    const auto url = [](const char *written) {
        return openAiUrl(QString::fromLatin1(written), u"/v1/chat/completions"_s)
            .value_or(u"none"_s)
            .toStdString();
    };
    EXPECT_EQ(url("http://127.0.0.1:8080"), "http://127.0.0.1:8080/v1/chat/completions");
    EXPECT_EQ(url("http://127.0.0.1:8080/"), "http://127.0.0.1:8080/v1/chat/completions");
    EXPECT_EQ(url("https://api.example/v1/"), "https://api.example/v1/chat/completions");
    EXPECT_EQ(url("http://[::1]:9/inference"), "http://[::1]:9/inference");
    for (const char *written : {"", "127.0.0.1:8080", "ftp://x", "http://", "http://key@host", "http://a b"})
        EXPECT_EQ(url(written), "none") << written;
}

TEST(LanguageNames, BecomeCodes) {
    struct Case {
        const char *name, *code;
    };
    for (const Case &row :
         {Case{"norwegian", "no"}, Case{"Norwegian Nynorsk", "nn"}, Case{"Nynorsk", "nn"},
          Case{"Norwegian Bokmål", "no"}, Case{"nb-NO", "no"}, Case{"no", "no"}, Case{"NN", "nn"},
          Case{"swedish", "sv"}, Case{"Danish", "da"}, Case{"finnish", "fi"}, Case{"english", "en"},
          Case{"icelandic", "is"}, Case{"german", "de"}, Case{"en_US", "en"}, Case{" sv ", "sv"},
          Case{"", ""}, Case{"klingonese", ""}})
        EXPECT_EQ(languageCode(QString::fromUtf8(row.name)).value_or(QString()).toStdString(), row.code)
            << row.name;
}

} // namespace velmo::localservice
