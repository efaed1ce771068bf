#include "service/transcription/transcription_client.h"

#include "service/http/fake_lookup.h"
#include "service/http/http_client.h"
#include "service/transcription/multipart_body.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/completion_probe.h"
#include "support/files.h"
#include "support/fixed_token.h"
#include "support/log_capture.h"
#include "support/scripted_server.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using namespace std::chrono_literals;
using testing::CompletionProbe;
using testing::Reaction;
using testing::ScriptedServer;
using Then = Reaction::Then;
using Case = TranscriptionError::Case;

const QByteArray kPath = "/api/transcribe";

class TranscriptionClientTest : public ::testing::Test {
protected:
    TranscriptionClientTest() { preferences.set(keys::deviceId, u"3f1c2b9e-8d47-4a0e-9b51-6c2d7e8f9a10"_s); }

    /// A file of that many bytes, none like its neighbour.
    [[nodiscard]] QString recording(qsizetype size, const QString &name = u"a.wav"_s) const {
        QString path = directory.filePath(name);
        testing::writeFile(path, bytes(size));
        return path;
    }

    [[nodiscard]] static QByteArray bytes(qsizetype size) {
        QByteArray made(size, '\0');
        for (qsizetype i = 0; i < size; ++i)
            made[i] = static_cast<char>(i * 7);
        return made;
    }

    [[nodiscard]] static ServiceOrigin originAt(const QString &text) { return *ServiceOrigin::parse(text); }

    TranscriptionResult transcribe(const QString &path,
                                   const std::optional<ServiceOrigin> &origin = std::nullopt) {
        CompletionProbe<TranscriptionResult> probe;
        {
            HttpClient http;
            TranscriptionClient client(origin.value_or(originAt(server.origin())), http, token, preferences,
                                       limits);
            client.transcribe(path, settings, probe.callback());
            static_cast<void>(probe.outcome());
        }
        EXPECT_EQ(probe.calls(), 1);
        EXPECT_NE(token.thread, std::this_thread::get_id());
        return probe.outcome();
    }

    /// The lines, with the only figure that is never the same twice left out.
    [[nodiscard]] QStringList lines() const {
        return log.lines().replaceInStrings(QRegularExpression(u"response: \\d+ms$"_s), u"response: …ms"_s);
    }

    QTemporaryDir directory;
    ScriptedServer server;
    testing::FixedToken token;
    MemoryPreferences preferences;
    HttpLimits limits{30s, 30s};
    TranscriptionSettings settings{u"no"_s, u"no, sv ,da"_s, {}};
    testing::LogCapture log;
};

TEST_F(TranscriptionClientTest, SendsExactlyTheseBytes) {
    token.token = u"t0ken"_s;
    preferences.set(keys::selectedMode, u"formal"_s);
    settings.prompt = u"Bjørn, Oslo, fjord"_s;
    server.answer(kPath, 200, "{\"text\":\" Hei på deg. \",\"detectedLanguage\":\"no\",\"more\":1}");

    const TranscriptionResult result = transcribe(recording(2048, u"tale.WAV"_s));

    ASSERT_TRUE(result);
    EXPECT_EQ(result->text, u" Hei på deg. "_s);
    EXPECT_EQ(result->detectedLanguage, u"no"_s);

    ASSERT_EQ(server.requests().size(), 1U);
    const testing::ReceivedRequest request = server.requests().front();
    const QByteArray type = *request.header("Content-Type");
    const QByteArray boundary = type.sliced(type.indexOf('=') + 1);
    EXPECT_TRUE(QRegularExpression(u"^Boundary-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"_s)
                    .match(QString::fromLatin1(boundary))
                    .hasMatch());
    EXPECT_EQ(request.head, "POST /api/transcribe HTTP/1.1\r\n"
                            "Host: " +
                                server.origin().sliced(7).toUtf8() +
                                "\r\n"
                                "User-Agent: Velmo/1.0.0\r\n"
                                "Content-Type: multipart/form-data; boundary=" +
                                boundary +
                                "\r\n"
                                "Authorization: Bearer t0ken\r\n"
                                "X-Device-Id: 3f1c2b9e-8d47-4a0e-9b51-6c2d7e8f9a10\r\n"
                                "X-Mode: formal\r\n"
                                "X-App-Version: 1.0.0\r\n"
                                "X-Source: mac\r\n"
                                "Content-Length: " +
                                QByteArray::number(request.body.size()) + "\r\n");
    const QByteArray expected =
        "--B\r\nContent-Disposition: form-data; name=\"audio\"; filename=\"recording.wav\"\r\n"
        "Content-Type: audio/wav\r\n\r\n" +
        bytes(2048) +
        "\r\n--B\r\nContent-Disposition: form-data; name=\"prompt\"\r\n\r\nBj\xc3\xb8rn, Oslo, fjord"
        "\r\n--B\r\nContent-Disposition: form-data; name=\"language\"\r\n\r\nno"
        "\r\n--B\r\nContent-Disposition: form-data; name=\"languages\"\r\n\r\n[\"no\",\"sv\",\"da\"]"
        "\r\n--B\r\nContent-Disposition: form-data; name=\"source\"\r\n\r\nmac"
        "\r\n--B--\r\n";
    EXPECT_EQ(QByteArray(request.body).replace("--" + boundary, "--B"), expected);

    EXPECT_EQ(lines(), (QStringList{u"🎙️ [Tx] File size: 2048 bytes"_s,
                                    u"⏱️ [Latency] Uploading 2KB audio (2KB total) to Whisper"_s,
                                    u"⏱️ [Latency] Whisper upload+response: …ms"_s,
                                    u"🎙️ [Tx] Success:  Hei på deg. ... (lang: no)"_s}));
}

TEST_F(TranscriptionClientTest, SaysLittleForSomebodyWithoutASession) {
    settings.prompt = QString();
    server.answer(kPath, 200,
                  "{\"text\":\"" + QByteArray("e\xcc\x81").repeated(51) + "\",\"detectedLanguage\":7}");
    const TranscriptionResult result = transcribe(recording(1000, u"a.caf"_s));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->detectedLanguage, std::nullopt);
    const testing::ReceivedRequest request = server.requests().front();
    EXPECT_EQ(request.header("Authorization"), std::nullopt);
    EXPECT_EQ(request.header("X-Mode"), "accurate");
    EXPECT_FALSE(request.body.contains("prompt"));
    EXPECT_TRUE(request.body.contains("filename=\"recording.caf\"\r\nContent-Type: audio/m4a\r\n"));
    EXPECT_EQ(log.lines().last(),
              u"🎙️ [Tx] Success: %1... (lang: nil)"_s.arg(u"e\u0301"_s.repeated(50)));
}

TEST_F(TranscriptionClientTest, CompletesLocalFailuresAtOnce) {
    HttpClient http;
    TranscriptionClient client(originAt(server.origin()), http, token, preferences);
    // A folder passes for a file until it is opened; its size grows with its entries.
    const QString folder = directory.filePath(u"folder.wav"_s);
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(QDir().mkpath(folder + u"/entry%1"_s.arg(i)));
    const QString folderSize = QString::number(QFileInfo(folder).size());
    const QString film = recording(0, u"film.m4a"_s);
    ASSERT_TRUE(QFile::resize(film, 268'435'457));
    struct Row {
        QString path;
        Case which;
        QStringList lines;
    };
    const std::vector<Row> rows = {
        {directory.filePath(u"missing.wav"_s), Case::fileNotFound, {}},
        {recording(999), Case::fileTooSmall, {u"🎙️ [Tx] File too small: 999 bytes"_s}},
        {folder, Case::fileNotFound, {u"🎙️ [Tx] File size: %1 bytes"_s.arg(folderSize)}},
        {film, Case::networkError, {u"🎙️ [Tx] File size: 268435457 bytes"_s}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        log.clear();
        CompletionProbe<TranscriptionResult> probe;
        client.transcribe(row.path, settings, probe.callback());
        ASSERT_EQ(probe.calls(), 1);
        EXPECT_EQ(probe.thread(), std::this_thread::get_id());
        EXPECT_EQ(probe.outcome().error().which(), row.which);
        EXPECT_EQ(log.lines(), row.lines);
    }
    EXPECT_EQ(server.connections(), 0);
}

struct Ending {
    const char *name;
    Reaction reaction;
    Case which;
    QString message;

    friend void PrintTo(const Ending &ending, std::ostream *out) { *out << ending.name; }
};

Ending invalid(const char *name, const Reaction &reaction) {
    return {name, reaction, Case::invalidResponse, u"Invalid server response"_s};
}

Ending refused(const char *name, const Reaction &reaction, const QString &what) {
    return {name, reaction, Case::serverError, u"Server error "_s + what};
}

// A row for each kind of failure that the HTTP client knows, and all that a reply can be.
const std::vector<Ending> kEndings = {
    {"Lost", {"", Then::Reset}, Case::networkError, u"Network error: The connection was lost."_s},
    {"Late", {"", Then::Hold}, Case::timeout, u"Request timed out"_s},
    invalid("NotHttp", {"SSH-2.0-OpenSSH_9.2\r\n", Then::Close}),
    invalid("EmptyBody", testing::reply(200, "")),
    invalid("NotJson", testing::reply(200, "<html>")),
    invalid("NoObject", testing::reply(200, "[{\"text\":\"hei\"}]")),
    invalid("TextMissing", testing::reply(200, "{\"Text\":\"hei\"}")),
    invalid("TextIsANumber", testing::reply(200, "{\"text\":7}")),
    invalid("BrokenUtf8", testing::reply(200, "{\"text\":\"h\xff\"}")),
    refused("OtherSuccess", testing::reply(201, "{\"text\":\"hei\"}"), u"201: unknown"_s),
    refused("NoContent", {"HTTP/1.1 204 No Content\r\n\r\n"}, u"204: unknown"_s),
    refused("Redirect", {"HTTP/1.1 308 Elsewhere\r\nLocation: /api/transcribe\r\nContent-Length: 0\r\n\r\n"},
            u"308: unknown"_s),
    refused("Refused", testing::reply(401, "{\"error\":\"Signed out\"}"), u"401: Signed out"_s),
    refused("ErrorIsNoString", testing::reply(500, "{\"error\":{}}"), u"500: unknown"_s),
    refused("Gateway", testing::reply(502, "<html>", "text/html"), u"502: unknown"_s),
};

class UploadEnding : public TranscriptionClientTest, public ::testing::WithParamInterface<Ending> {};

TEST_P(UploadEnding, IsReportedOnceAfterOneRequest) {
    if (GetParam().which == Case::timeout)
        limits = {800ms, 300ms};
    server.react(kPath, {GetParam().reaction});
    const TranscriptionResult result = transcribe(recording(100'000));
    ASSERT_FALSE(result) << result->text.toStdString();
    EXPECT_EQ(result.error().which(), GetParam().which);
    EXPECT_EQ(result.error().localizedDescription(), GetParam().message);
    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.connections(), 1);
    EXPECT_EQ(lines().last(), u"⏱️ [Latency] Whisper upload+response: …ms"_s);
}

INSTANTIATE_TEST_SUITE_P(Table, UploadEnding, ::testing::ValuesIn(kEndings),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(TranscriptionClientTest, CompletesOnceWhenItEndsUnderWay) {
    server.react(kPath, {{"", Then::Hold}});
    CompletionProbe<TranscriptionResult> underWay;
    CompletionProbe<TranscriptionResult> hardlyBegun;
    {
        HttpClient http;
        TranscriptionClient client(originAt(server.origin()), http, token, preferences);
        client.transcribe(recording(1000), settings, underWay.callback());
        server.waitForRequests(1);
        client.transcribe(recording(1000), settings, hardlyBegun.callback());
    }
    for (const auto &probe : {underWay, hardlyBegun}) {
        ASSERT_EQ(probe.calls(), 1);
        EXPECT_EQ(probe.outcome().error().localizedDescription(),
                  u"Network error: The connection was lost."_s);
    }
}

TEST_F(TranscriptionClientTest, ReadsTheRecordingThoughItIsRemovedAtOnce) {
    server.answer(kPath, 200, "{\"text\":\"hei\"}");
    HttpClient http;
    TranscriptionClient client(originAt(server.origin()), http, token, preferences);
    const QString path = recording(100'000);
    CompletionProbe<TranscriptionResult> probe;
    client.transcribe(path, settings, probe.callback());
    QFile::remove(path);
    EXPECT_TRUE(probe.outcome());
    EXPECT_TRUE(server.requests().front().body.contains(bytes(100'000)));
}

TEST_F(TranscriptionClientTest, OpensAConnectionAhead) {
    HttpClient http;
    TranscriptionClient client(originAt(server.origin()), http, token, preferences);
    client.prepare();
    server.waitForReplies(1);
    server.answer(kPath, 200, "{\"text\":\"hei\"}");
    CompletionProbe<TranscriptionResult> probe;
    client.transcribe(recording(1000), settings, probe.callback());
    EXPECT_TRUE(probe.outcome());
    EXPECT_EQ(server.requests().front().head.first(8), "HEAD / H");
    EXPECT_EQ(server.connections(), 1);
    EXPECT_EQ(token.prepared, 1);
}

// While the recording is being made

class LiveUploadTest : public TranscriptionClientTest {
protected:
    LiveUploadTest() { server.answer("/health", 200, "{\"status\":\"ok\",\"liveUpload\":true}"); }

    /// More is written to the recording, as the recorder does.
    void grow(const QString &path, const QByteArray &bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly | QFile::Append));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// The recording is made in three steps, and the service meets each in its own time.
    TranscriptionResult dictate(const TranscriptionSettings &atTheEnd) {
        const QString path = recording(20);
        CompletionProbe<TranscriptionResult> probe;
        {
            HttpClient http;
            TranscriptionClient client(originAt(server.origin()), http, token, preferences, limits);
            client.follow(path, settings, {});
            server.waitForReplies(1);
            grow(path, bytes(3000).sliced(20));
            std::this_thread::sleep_for(150ms);
            grow(path, bytes(90'000).sliced(3000));
            client.transcribe(path, atTheEnd, probe.callback());
            QFile::remove(path);
            static_cast<void>(probe.outcome());
        }
        EXPECT_EQ(probe.calls(), 1);
        return probe.outcome();
    }
};

TEST_F(LiveUploadTest, SendsTheSameRecordingBehindTheSettings) {
    settings.prompt = u"Bjørn"_s;
    server.answer(kPath, 200, "{\"text\":\"Hei\",\"detectedLanguage\":\"no\"}");
    const TranscriptionResult result = dictate(settings);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->text, u"Hei"_s);
    ASSERT_EQ(server.requests().size(), 2U);
    const testing::ReceivedRequest request = server.requests().back();
    EXPECT_EQ(request.header("Content-Length"), std::nullopt);
    EXPECT_EQ(request.header("X-Source"), "mac");
    const QByteArray boundary =
        request.header("Content-Type")->sliced(qstrlen("multipart/form-data; boundary="));
    EXPECT_EQ(QByteArray(request.body).replace("--" + boundary, "--B"),
              "--B\r\nContent-Disposition: form-data; name=\"prompt\"\r\n\r\nBj\xc3\xb8rn"
              "\r\n--B\r\nContent-Disposition: form-data; name=\"language\"\r\n\r\nno"
              "\r\n--B\r\nContent-Disposition: form-data; name=\"languages\"\r\n\r\n[\"no\",\"sv\",\"da\"]"
              "\r\n--B\r\nContent-Disposition: form-data; name=\"source\"\r\n\r\nmac"
              "\r\n--B\r\nContent-Disposition: form-data; name=\"audio\"; filename=\"recording.wav\"\r\n"
              "Content-Type: audio/wav\r\n\r\n" +
                  bytes(90'000) + "\r\n--B--\r\n");
    EXPECT_EQ(lines(), (QStringList{u"🎙️ [Tx] File size: 90000 bytes"_s,
                                    u"⏱️ [Latency] Uploading 87KB audio (88KB total) to Whisper"_s,
                                    u"⏱️ [Latency] Whisper upload+response: …ms"_s,
                                    u"🎙️ [Tx] Success: Hei... (lang: no)"_s}));
}

TEST_F(LiveUploadTest, TellsWhatIsHeardUntilTheServiceHasNoMoreToSay) {
    server.react(kPath, {{"", Then::Hold, Reaction::Reads::Head}});
    HttpClient http;
    TranscriptionClient client(originAt(server.origin()), http, token, preferences, limits);
    std::mutex mutex;
    QStringList heard;
    server.react("/api/transcribe/words",
                 {testing::reply(200, "{\"text\":\"Hei\"}"), testing::reply(200, "{\"text\":\"Hei på\"}")});
    client.follow(recording(3000), settings, [&](const QString &text) {
        const std::lock_guard lock(mutex);
        heard.append(text);
    });
    server.waitForReplies(5); // health, the upload, and the words: new, new, the same
    client.abandon();
    http.waitUntilIdle();
    EXPECT_EQ(heard, (QStringList{u"Hei"_s, u"Hei på"_s}));
}

struct LiveEnding {
    const char *name;
    const char *health;
    std::deque<Reaction> reactions; ///< Of the live upload, and of the one in the usual way.
    const char *language;           ///< At the end; another one than at the beginning means other settings.
    std::size_t uploads;
    QString text; ///< Of the transcript or the error.

    friend void PrintTo(const LiveEnding &ending, std::ostream *out) { *out << ending.name; }
};

const char kTakesLive[] = "{\"liveUpload\":true}";

const std::vector<LiveEnding> kLiveEndings = {
    {"NotOffered", "{\"status\":\"ok\"}", {testing::reply(200, "{\"text\":\"hei\"}")}, "no", 1, u"hei"_s},
    {"Lost", kTakesLive, {{"", Then::Reset}, testing::reply(200, "{\"text\":\"hei\"}")}, "no", 2, u"hei"_s},
    {"Busy",
     kTakesLive,
     {testing::reply(503, "{}"), testing::reply(200, "{\"text\":\"hei\"}")},
     "no",
     2,
     u"hei"_s},
    {"AnsweredTooEarly",
     kTakesLive,
     {{"HTTP/1.1 400 Early\r\nContent-Length: 2\r\n\r\n{}", Then::Hold, Reaction::Reads::Head},
      testing::reply(200, "{\"text\":\"hei\"}")},
     "no",
     2,
     u"hei"_s},
    {"OtherSettings", kTakesLive, {testing::reply(200, "{\"text\":\"hei\"}")}, "sv", 1, u"hei"_s},
    {"Refused",
     kTakesLive,
     {testing::reply(422, "{\"error\":\"No.\"}")},
     "no",
     1,
     u"Server error 422: No."_s},
    {"Late", kTakesLive, {{"", Then::Hold}}, "no", 1, u"Request timed out"_s},
};

class LiveUploadEnding : public LiveUploadTest, public ::testing::WithParamInterface<LiveEnding> {};

TEST_P(LiveUploadEnding, NeverLosesTheDictationNorSendsItAgainOnceAnswered) {
    const LiveEnding &row = GetParam();
    limits = {800ms, 400ms};
    server.answer("/health", 200, row.health);
    server.react(kPath, row.reactions);
    TranscriptionSettings atTheEnd = settings;
    atTheEnd.language = QString::fromLatin1(row.language);
    const TranscriptionResult result = dictate(atTheEnd);
    EXPECT_EQ(result ? result->text : result.error().localizedDescription(), row.text);
    const auto requests = server.requests();
    EXPECT_EQ(std::count_if(requests.begin(), requests.end(),
                            [](const auto &request) { return request.path == kPath; }),
              row.uploads);
    EXPECT_TRUE(row.uploads == 1 || requests.back().body.contains(bytes(90'000)));
}

INSTANTIATE_TEST_SUITE_P(Table, LiveUploadEnding, ::testing::ValuesIn(kLiveEndings),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(LiveUploadTest, TakesAsLongAsThePersonSpeaksAndEndsWhenTheyCancel) {
    limits = {200ms, 100ms};
    server.react(kPath, {{"", Then::Hold, Reaction::Reads::Head}});
    HttpClient http;
    TranscriptionClient client(originAt(server.origin()), http, token, preferences, limits);
    client.follow(recording(3000), settings, {});
    server.waitForRequests(2);
    std::this_thread::sleep_for(500ms);
    client.abandon();
    http.waitUntilIdle(); // hangs where cancelling does not close the connection
    EXPECT_EQ(server.requests().size(), 2U);
}

TEST(MultipartBody, WritesTheSelectedLanguagesAsTheyAre) {
    struct Row {
        const char *stored;
        const char *json;
    };
    const std::array rows = {Row{"no,sv,da,fi,en", "[\"no\",\"sv\",\"da\",\"fi\",\"en\"]"},
                             Row{"no, sv\t,\u00a0da\u3000", "[\"no\",\"sv\",\"da\"]"},
                             Row{"no,,sv,", "[\"no\",\"\",\"sv\",\"\"]"},
                             Row{"", "[\"\"]"},
                             Row{"no\n", "[\"no\\n\"]"},
                             Row{"n\"o", "[\"n\\\"o\"]"}};
    for (const Row &row : rows)
        EXPECT_EQ(languagesJson(QString::fromUtf8(row.stored)), row.json);
}

TEST(MultipartBody, NamesTheFileByItsExtension) {
    struct Row {
        const char *path;
        QByteArray name;
        QByteArray type;
    };
    const std::array rows = {Row{"/tmp/a.b.Wav", "recording.wav", "audio/wav"},
                             Row{"/tmp/a.waV2", "recording.wav2", "audio/m4a"},
                             Row{"/tmp/dir.wav/speech", "recording.", "audio/m4a"},
                             Row{"/tmp/a.w\"a\r\nv", "recording.w%22a%0D%0Av", "audio/m4a"}};
    for (const Row &row : rows) {
        QBuffer silence;
        ASSERT_TRUE(silence.open(QIODevice::ReadOnly));
        const auto body = multipartBody("B", QString::fromUtf8(row.path), silence, {});
        ASSERT_TRUE(body);
        EXPECT_TRUE(body->startsWith("--B\r\nContent-Disposition: form-data; name=\"audio\"; filename=\"" +
                                     row.name + "\"\r\nContent-Type: " + row.type + "\r\n\r\n\r\n--B\r\n"))
            << body->constData();
    }
}

} // namespace

} // namespace velmo
