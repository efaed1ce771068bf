#include "platform/linux/pulse/microphone.h"

#include "base/qt_main_queue.h"
#include "dictation/capture/audio_recorder.h"
#include "platform/linux/pulse/connection.h"
#include "platform/linux/sndfile/sndfile_recording_files.h"
#include "support/log_capture.h"
#include "support/pulse_server.h"
#include "support/wait_until.h"
#include "support/wave_file.h"

#include <QDir>
#include <csignal>
#include <gmock/gmock.h>
#include <numeric>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using ::testing::IsEmpty;

namespace velmo {

namespace {

using testing::PulseServer;

bool isAnything(float) {
    return true;
}
bool isSilence(float level) {
    return level == 0;
}
bool isTone(float level) {
    return level > 0.5F;
}

/// A recorder on a real sound server.
class PulseMicrophoneTest : public ::testing::Test {
protected:
    PulseMicrophoneTest() {
        recorder.onMicrophoneLost = [this] { isLost = true; };
    }

    [[nodiscard]] QString errorOfStart() {
        const auto started = recorder.startRecording();
        EXPECT_THAT(QDir(directory.path()).entryList(QDir::Files), IsEmpty());
        return started ? QString() : started.error().description;
    }

    /// Starts, and waits until something is heard.
    void startHearing() {
        const auto started = recorder.startRecording();
        ASSERT_TRUE(started) << started.error().description.toStdString();
        ASSERT_TRUE(hears(isAnything));
    }

    /// Whether a block of that loudness comes.
    [[nodiscard]] bool hears(const std::function<bool(float level)> &wanted) {
        bool isHeard = false;
        recorder.onAudioLevel = [&](float level) { isHeard = isHeard || wanted(level); };
        const bool isOver = testing::waitUntil([&] { return isHeard || isLost; });
        recorder.onAudioLevel = nullptr;
        return isOver && isHeard;
    }

    [[nodiscard]] testing::WaveFile stop() {
        const QString path = recorder.stopRecording().value_or(QString());
        const auto recording = testing::readWave(path);
        recorder.deleteRecording(path);
        return recording;
    }

    testing::LogCapture log;
    QtMainQueue queue;
    QTemporaryDir directory;
    std::unique_ptr<Microphone> microphone =
        makePulseMicrophone(std::make_shared<pulse::Connection>(), queue);
    std::unique_ptr<RecordingFiles> files = makeSndfileRecordingFiles();
    AudioRecorder recorder{{queue, *microphone, *files}, directory.path()};
    bool isLost = false;
};

/// How loud each 20 ms of it are.
std::vector<double> envelope(const testing::WaveFile &wave) {
    std::vector<double> values;
    const auto step = static_cast<std::size_t>(wave.sampleRate / 50);
    for (std::size_t at = 0; at + step <= wave.samples.size(); at += step)
        values.push_back(testing::loudness(std::span(wave.samples).subspan(at, step)));
    return values;
}

/// How well the sound is found anywhere in the recording: 1 where it is there exactly, about 0 where it is not.
double likeness(const testing::WaveFile &sound, const testing::WaveFile &recording) {
    const auto wanted = envelope(sound);
    const auto heard = envelope(recording);
    double best = 0;
    for (std::size_t at = 0; at + wanted.size() <= heard.size(); ++at) {
        const std::span part(heard.data() + at, wanted.size());
        const double both = std::inner_product(wanted.begin(), wanted.end(), part.begin(), 0.0);
        const double each = std::sqrt(std::inner_product(wanted.begin(), wanted.end(), wanted.begin(), 0.0) *
                                      std::inner_product(part.begin(), part.end(), part.begin(), 0.0));
        best = std::max(best, each > 0 ? both / each : 0);
    }
    return best;
}

TEST_F(PulseMicrophoneTest, RecordsWhatIsSpoken) {
    PulseServer server(PulseServer::virtualMicrophone());
    server.wakeMicrophone();
    const QString speech = testing::speechFile(directory, u"The quick brown fox jumps over the lazy dog."_s);
    server.load(speech);
    recorder.press(queue.uptime());
    startHearing();
    server.play();
    EXPECT_TRUE(hears(isSilence)) << "the last word is through";
    const auto recording = stop();
    EXPECT_TRUE(log.lines().first().endsWith(u"(16kHz mono, input: 48000Hz 2ch)"_s));
    EXPECT_EQ(recording.sampleRate, 16000);
    const auto spoken = testing::readWave(speech);
    EXPECT_GT(likeness(spoken, recording), 0.9);
    EXPECT_GT(*std::max_element(recording.samples.begin(), recording.samples.end()), 0.1F);
}

TEST_F(PulseMicrophoneTest, SaysThatThereIsNoServer) {
    qputenv("PULSE_SERVER", "unix:/nowhere");
    EXPECT_EQ(errorOfStart(), u"The sound server could not be reached."_s);
    recorder.press(queue.uptime());
    PulseServer server({PulseServer::toneMicrophone(u"tone"_s)});
    startHearing(); // what comes up later is found
}

TEST_F(PulseMicrophoneTest, SaysThatThereIsNoMicrophone) {
    PulseServer server({});
    EXPECT_EQ(errorOfStart(), u"No microphone was found."_s);
    server.control({u"load-module"_s, u"module-always-sink"_s});
    EXPECT_EQ(errorOfStart(), u"No microphone was found."_s) << "only the dummy output's sound";
}

TEST_F(PulseMicrophoneTest, GivesAHangingServerUp) {
    PulseServer server({PulseServer::toneMicrophone(u"tone"_s)});
    startHearing();
    server.signal(SIGSTOP);
    EXPECT_GT(stop().samples.size(), 0U) << "stopping waits for nobody";
    EXPECT_EQ(errorOfStart(), u"The sound server did not answer."_s);
    server.signal(SIGCONT);
    startHearing();
}

TEST_F(PulseMicrophoneTest, GoesOnWithTheNewDefault) {
    PulseServer server(PulseServer::virtualMicrophone());
    server.wakeMicrophone();
    startHearing();
    server.control({u"load-module"_s, u"module-sine-source"_s, u"source_name=tone"_s, u"rate=44100"_s});
    server.control({u"set-default-source"_s, u"tone"_s});
    EXPECT_TRUE(hears(isTone)) << "the tone of the new default, in the format of the first one";
    server.control({u"set-default-source"_s, u"mic"_s});
    EXPECT_TRUE(hears(isSilence));
    server.control({u"unload-module"_s, u"module-remap-source"_s});
    server.control({u"unload-module"_s, u"module-null-sink"_s});
    EXPECT_TRUE(hears(isTone)) << "unplugged, the tone is what is left";
    const auto recording = stop();
    EXPECT_FALSE(isLost);
    EXPECT_GT(testing::loudness(std::span(recording.samples).last(800)), 0.1);
}

struct Loss {
    const char *name;
    QString logged;
    void (*cause)(PulseServer &server);
};

void PrintTo(const Loss &loss, std::ostream *out) {
    *out << loss.name;
}

class PulseMicrophoneLossTest : public PulseMicrophoneTest, public ::testing::WithParamInterface<Loss> {};

TEST_P(PulseMicrophoneLossTest, EndsTheRecordingWithWhatWasHeard) {
    PulseServer server({PulseServer::toneMicrophone(u"tone"_s)});
    startHearing();
    GetParam().cause(server);
    EXPECT_TRUE(testing::waitUntil([this] { return isLost; }));
    EXPECT_TRUE(log.contains(u"🎙️ [Recorder] Microphone lost: "_s + GetParam().logged));
    const auto recording = stop();
    EXPECT_EQ(recording.sampleRate, 16000);
    EXPECT_GT(testing::loudness(recording.samples), 0.1);
}

INSTANTIATE_TEST_SUITE_P(
    Causes, PulseMicrophoneLossTest,
    ::testing::Values(Loss{"Unplugged", u"No microphone was found."_s,
                           [](PulseServer &server) {
                               server.control({u"unload-module"_s, u"module-sine-source"_s});
                           }},
                      Loss{"OnlyTheDummyOutputLeft", u"No microphone was found."_s,
                           [](PulseServer &server) {
                               server.control({u"load-module"_s, u"module-always-sink"_s});
                               server.control({u"unload-module"_s, u"module-sine-source"_s});
                           }},
                      Loss{"ServerKilled", u"The sound server could not be reached."_s,
                           [](PulseServer &server) { server.signal(SIGKILL); }}),
    [](const auto &info) { return info.param.name; });

} // namespace

} // namespace velmo
