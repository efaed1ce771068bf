#include "localservice/speech/endpoints.h"

#include "localservice/http/raw_connection.h"
#include "localservice/http/running_server.h"
#include "localservice/speech/engine_pool.h"
#include "localservice/speech/live_recordings.h"
#include "localservice/speech/upload_form.h"

#include <atomic>
#include <gtest/gtest.h>
#include <semaphore>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using testing::errorOf;
using testing::objectOf;
using testing::textPart;
using testing::UploadForm;

/// Pieces of a tenth of a second, and the rest.
class TenthsCutter final : public SoundCutter {
public:
    std::vector<SoundPiece> append(std::span<const int16_t> samples) override {
        m_rest.insert(m_rest.end(), samples.begin(), samples.end());
        std::vector<SoundPiece> pieces;
        while (m_rest.size() >= 1600)
            pieces.push_back(take(1600));
        return pieces;
    }
    std::vector<SoundPiece> finish() override {
        std::vector<SoundPiece> pieces;
        if (!m_rest.empty())
            pieces.push_back(take(m_rest.size()));
        return pieces;
    }

private:
    SoundPiece take(size_t count) {
        const auto end = m_rest.begin() + static_cast<std::ptrdiff_t>(count);
        SoundPiece piece{{{m_rest.begin(), end}}, 0};
        m_rest.erase(m_rest.begin(), end);
        return piece;
    }

    std::vector<int16_t> m_rest;
};

/// Hears the first and the last sample of each piece, and is told apart from what comes later by the semaphore.
class NumberEngine final : public SpeechEngine {
public:
    explicit NumberEngine(std::counting_semaphore<> &heard) : m_heard(heard) {}

    std::optional<double> measureWorkPerSecond() override { return {}; }
    SpeechOutcome transcribe(const Speech &speech, const Patience &) override {
        m_heard.release();
        return Transcript{u"%1-%2"_s.arg(speech.sound.samples.front()).arg(speech.sound.samples.back()),
                          speech.upload.language};
    }

private:
    std::counting_semaphore<> &m_heard;
};

class LiveTranscriptionTest : public ::testing::Test {
protected:
    /// Half a second of sound that counts its samples.
    [[nodiscard]] static QByteArray recording() {
        QByteArray file("RIFF\xff\xff\xff\xffWAVEfmt \x10\0\0\0\x01\0\x01\0\x80\x3e\0\0\0\x7d\0\0\x02\0\x10\0"
                        "data\0\0\0\0",
                        44);
        for (int sample = 1; sample <= 8000; ++sample) {
            file += static_cast<char>(sample & 0xff);
            file += static_cast<char>(sample >> 8);
        }
        return file;
    }

    [[nodiscard]] static UploadForm liveForm(const QByteArray &audio = recording()) {
        UploadForm form = testing::uploadForm(audio);
        form.parts.append(form.parts.takeFirst());
        return form;
    }

    [[nodiscard]] EngineKind engines() {
        EngineKind kind;
        kind.make = [this]() -> Result<std::unique_ptr<SpeechEngine>, QString> {
            return std::make_unique<NumberEngine>(m_heard);
        };
        kind.makeCutter = [] { return std::make_unique<TenthsCutter>(); };
        return kind;
    }

    /// Sends the body in chunks of that size.
    httplib::Result post(const UploadForm &form, qsizetype chunk = 1000) {
        const QByteArray body = form.body();
        return m_server.client().Post(
            "/api/transcribe", testing::uploadHeaders(),
            [&](size_t offset, httplib::DataSink &sink) {
                const QByteArray piece = body.mid(static_cast<qsizetype>(offset), chunk);
                if (piece.isEmpty())
                    sink.done();
                else
                    sink.write(piece.constData(), static_cast<size_t>(piece.size()));
                return true;
            },
            form.contentType.toStdString());
    }

    std::counting_semaphore<> m_heard{0};
    EnginePool m_engines{engines()};
    LiveRecordings m_recordings;
    testing::RunningServer m_server{{transcribeEndpoint(m_engines, m_recordings), wordsEndpoint(m_recordings),
                                     healthEndpoint(m_engines)}};
};

TEST_F(LiveTranscriptionTest, HearsEverySampleOnceHoweverTheBodyIsCut) {
    ASSERT_TRUE(m_engines.waitUntilReady());
    EXPECT_TRUE(objectOf(*m_server.client().Get("/health")).value(u"liveUpload").toBool());
    for (const qsizetype chunk : {1, 7, 1000, 100'000}) {
        const auto reply = post(liveForm(), chunk);
        ASSERT_EQ(reply->status, 200) << chunk << reply->body;
        EXPECT_EQ(objectOf(*reply).value(u"text").toString(),
                  u"1-1600 1601-3200 3201-4800 4801-6400 6401-8000"_s);
        EXPECT_EQ(objectOf(*reply).value(u"detectedLanguage").toString(), u"no"_s);
    }
}

TEST_F(LiveTranscriptionTest, BeginsBeforeTheRecordingEndsAndForgetsWhatIsBrokenOff) {
    const UploadForm form = liveForm();
    const QByteArray begun = form.body().chopped(form.end.size());
    testing::RawConnection client(m_server.port());
    QByteArray head =
        "POST /api/transcribe HTTP/1.1\r\nHost: 127.0.0.1:" + QByteArray::number(m_server.port()) +
        "\r\nTransfer-Encoding: chunked\r\nContent-Type: " + form.contentType + "\r\n";
    for (const auto &[name, value] : testing::uploadHeaders())
        head += QByteArray::fromStdString(name + ": " + value + "\r\n");
    client.send(head + "\r\n" + QByteArray::number(begun.size(), 16) + "\r\n" + begun + "\r\n");
    for (int piece = 0; piece < 4; ++piece) // the fifth may still turn out to be the end of the body
        m_heard.acquire();
    EXPECT_FALSE(client.waitForReply(std::chrono::milliseconds(50)));

    const std::string upload = form.contentType.sliced(form.contentType.indexOf('=') + 1).toStdString();
    const auto words = m_server.client().Get("/api/transcribe/words?known=0&upload=" + upload);
    EXPECT_TRUE(objectOf(*words).value(u"text").toString().startsWith(u"1-1600 1601-3200"_s)) << words->body;
    EXPECT_EQ(m_server.client().Get("/api/transcribe/words?known=0&upload=other")->status, 404);
}

struct LiveFault {
    const char *name;
    void (*spoil)(UploadForm &form);
    int status;
    const char *mentions;

    friend void PrintTo(const LiveFault &fault, std::ostream *out) { *out << fault.name; }
};

class LiveFaults : public LiveTranscriptionTest, public ::testing::WithParamInterface<LiveFault> {};

TEST_P(LiveFaults, AreRefusedWithThePieceAtFault) {
    UploadForm form = liveForm();
    GetParam().spoil(form);
    const auto reply = post(form);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->status, GetParam().status);
    EXPECT_TRUE(errorOf(*reply).contains(QLatin1StringView(GetParam().mentions)))
        << errorOf(*reply).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Table, LiveFaults,
    ::testing::Values(
        LiveFault{"OrderOfAFinishedOne", [](UploadForm &form) { form.parts.move(form.parts.size() - 1, 0); },
                  400, "missing"},
        LiveFault{"LanguageMissing", [](UploadForm &form) { form.parts.removeFirst(); }, 400, "\"language\""},
        LiveFault{"NoRecording",
                  [](UploadForm &form) { form.parts = {textPart("prompt", QByteArray(70'000, 'a'))}; }, 400,
                  "64 KiB"},
        LiveFault{"OtherSound", [](UploadForm &form) { form.parts.last().replace("\x80\x3e", "\x44\xac"); },
                  400, "16 kHz"},
        LiveFault{"CutOff", [](UploadForm &form) { form.end.chop(1); }, 400, "closing boundary"},
        LiveFault{"OddByte", [](UploadForm &form) { form.end.prepend('\0'); }, 400, "closing boundary"},
        LiveFault{"OtherType", [](UploadForm &form) { form.contentType = "audio/wav"; }, 400,
                  "Content-Type"}),
    [](const auto &row) { return std::string(row.param.name); });

} // namespace

} // namespace velmo::localservice
