#include "dictation/capture/audio_recorder.h"

#include "dictation/capture/fake_microphone.h"
#include "dictation/capture/recording_paths.h"
#include "platform/linux/sndfile/sndfile_recording_files.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"
#include "support/small_disk.h"
#include "support/wave_file.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::FloatNear;
using ::testing::IsEmpty;

namespace velmo {

namespace {

class AudioRecorderTest : public ::testing::Test {
protected:
    [[nodiscard]] QStringList recordings() const { return QDir(directory.path()).entryList(QDir::Files); }

    /// Stops and reads what was recorded.
    testing::WaveFile stop() {
        const auto path = recorder.stopRecording();
        return path ? testing::readWave(*path) : testing::WaveFile{};
    }

    testing::LogCapture log;
    testing::ManualMainQueue queue;
    testing::FakeMicrophone microphone;
    std::unique_ptr<RecordingFiles> files = makeSndfileRecordingFiles();
    QTemporaryDir directory;
    AudioRecorder recorder{{queue, microphone, *files}, directory.path(), 10ms};
};

// The file

TEST_F(AudioRecorderTest, Writes16KilohertzMonoWhateverTheMicrophoneDelivers) {
    for (const CaptureFormat &format :
         {CaptureFormat{48000, 1}, CaptureFormat{44100, 2}, CaptureFormat{8000, 1}, CaptureFormat{16000, 1},
          CaptureFormat{96000, 6}}) {
        SCOPED_TRACE(format.sampleRate);
        log.clear();
        microphone.format = format;
        const auto path = recorder.startRecording();
        ASSERT_TRUE(path);
        // A tone of 1 kHz on every channel, not a whole number of blocks.
        const int frames = format.sampleRate * 3 / 2 + 7;
        std::vector<float> tone;
        for (int i = 0; i < frames; ++i)
            tone.insert(tone.end(), static_cast<std::size_t>(format.channels),
                        0.5F * static_cast<float>(std::sin(2 * M_PI * 1000 * i / format.sampleRate)));
        microphone.deliver(tone);
        const auto wave = stop();

        EXPECT_TRUE(wave.is16BitWave);
        EXPECT_EQ(wave.sampleRate, 16000);
        EXPECT_EQ(wave.channels, 1);
        EXPECT_EQ(wave.samples.size(), std::lround(frames * 16000.0 / format.sampleRate))
            << "all of it, to the end";
        const std::span<const float> inside(wave.samples.data() + 1600, 16000);
        EXPECT_NEAR(testing::loudness(inside), 0.5 / std::sqrt(2), 0.002);
        EXPECT_THAT(log.lines(),
                    ElementsAre(u"🎙️ [Recorder] Started recording to %1 (16kHz mono, input: %2Hz %3ch)"_s
                                    .arg(QFileInfo(*path).fileName())
                                    .arg(format.sampleRate)
                                    .arg(format.channels),
                                u"🎙️ [Recorder] Stopped — file size: %1 bytes"_s.arg(
                                    44 + 2 * wave.samples.size())));
    }
}

TEST_F(AudioRecorderTest, GivesEveryRecordingAFileOfItsOwn) {
    QStringList names;
    for (int i = 0; i < 2; ++i) {
        names.append(QFileInfo(recorder.startRecording().value_or(QString())).fileName());
        stop();
    }
    EXPECT_NE(names.first(), names.last());
    static const QRegularExpression form(
        u"^velmo-recording-[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\.wav$"_s);
    EXPECT_TRUE(form.match(names.first()).hasMatch()) << names.first().toStdString();
}

TEST_F(AudioRecorderTest, IgnoresABlockTooShortForOneSample) {
    ASSERT_TRUE(recorder.startRecording());
    microphone.deliver({0.3F, 0.3F});
    EXPECT_THAT(stop().samples, IsEmpty());
}

// Levels

TEST_F(AudioRecorderTest, ReportsTheLevelOfTheFirstChannelOfEachBlock) {
    microphone.format = CaptureFormat{48000, 2};
    ASSERT_TRUE(recorder.startRecording());
    std::vector<float> levels;
    recorder.onAudioLevel = [&](float level) { levels.push_back(level); };
    for (const float first : {0.0F, 0.075F, -0.15F, 0.3F}) {
        std::vector<float> block;
        for (int frame = 0; frame < 4096; ++frame)
            block.insert(block.end(), {first, 0.9F});
        microphone.deliver(block);
    }
    EXPECT_THAT(levels, IsEmpty()) << "levels come on the main queue";
    queue.runPosted();
    EXPECT_THAT(levels, ElementsAre(0.0F, FloatNear(0.5F, 1e-4F), FloatNear(1.0F, 1e-4F), 1.0F));
    stop();
    EXPECT_FALSE(recorder.onAudioLevel);
}

// Starting and stopping

TEST_F(AudioRecorderTest, RefusesASecondStartAndGoesOn) {
    ASSERT_TRUE(recorder.startRecording());
    microphone.deliver(100ms, 0.2F);
    const auto second = recorder.startRecording();
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().description, u"Already recording"_s);
    microphone.deliver(100ms, 0.2F);
    EXPECT_EQ(stop().samples.size(), 3200U);
    EXPECT_EQ(queue.pendingTimers(), 0U) << "nobody watches the microphone any more";
    log.clear();
    EXPECT_FALSE(recorder.stopRecording());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(AudioRecorderTest, LeavesNothingBehindOfAFailedStart) {
    const std::tuple<const char *, std::optional<CaptureFormat>, std::optional<QString>, QString> cases[] = {
        {"no microphone", CaptureFormat{48000, 1}, u"No microphone was found."_s,
         u"No microphone was found."_s},
        {"no answer", std::nullopt, std::nullopt, u"The sound server did not answer."_s},
        {"odd format", CaptureFormat{0, 1}, std::nullopt,
         u"The format of the microphone is not supported."_s},
    };
    for (const auto &[name, format, failure, message] : cases) {
        SCOPED_TRACE(name);
        microphone.format = format;
        microphone.failure = failure;
        const auto started = recorder.startRecording();
        ASSERT_FALSE(started);
        EXPECT_EQ(started.error().description, message);
        EXPECT_FALSE(microphone.isOpen());
        EXPECT_FALSE(recorder.isRecording());
        EXPECT_THAT(recordings(), IsEmpty());
    }
    microphone.format = CaptureFormat{48000, 1};
    microphone.failure.reset();
    queue.runPosted(); // the failures, told late
    EXPECT_TRUE(recorder.startRecording()) << "a later start works";
    EXPECT_TRUE(microphone.isOpen());
}

TEST_F(AudioRecorderTest, GoesOnWhileTheDiskIsFull) {
    const testing::SmallDisk disk;
    if (!disk.isMounted())
        GTEST_SKIP() << "mounting takes root or user namespaces";
    AudioRecorder onDisk({queue, microphone, *files}, disk.path(QString()));
    const auto path = onDisk.startRecording();
    ASSERT_TRUE(path);
    microphone.deliver(1s, 0.2F);
    disk.fill();
    microphone.deliver(2s, 0.2F);
    disk.empty();
    microphone.deliver(1s, 0.2F);
    ASSERT_TRUE(onDisk.stopRecording());
    const auto samples = testing::readWave(*path).samples;
    EXPECT_GE(samples.size(), 30000U) << "before and after";
    EXPECT_LT(samples.size(), 64000U);
    EXPECT_EQ(log.lines().filter(u"lacks samples: The disk is full."_s).size(), 1);

    disk.fill();
    const auto refused = onDisk.startRecording();
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().description, u"The disk is full."_s);
    EXPECT_FALSE(microphone.isOpen());
}

// Listening ahead

TEST_F(AudioRecorderTest, BeginsPushToTalkWithWhatWasHeardSinceThePress) {
    microphone.clock = queue.uptime();
    recorder.press(queue.uptime());
    microphone.deliver(300ms, 0.2F);
    EXPECT_THAT(recordings(), IsEmpty()) << "nothing is written yet";
    ASSERT_TRUE(recorder.startRecording());
    EXPECT_EQ(microphone.openings, 1);
    microphone.deliver(200ms, 0.2F);
    EXPECT_EQ(stop().samples.size(), 8000U);
    EXPECT_FALSE(microphone.isOpen());
}

TEST_F(AudioRecorderTest, BeginsHandsFreeWithWhatWasHeardSinceTheSecondPress) {
    microphone.clock = queue.uptime();
    recorder.press(microphone.clock);
    microphone.deliver(250ms, 0.8F);
    const auto secondPress = microphone.clock - 3ms; // in the middle of a fragment
    recorder.press(secondPress);
    microphone.deliver(97ms, 0.2F);
    ASSERT_TRUE(recorder.startRecording());
    EXPECT_EQ(microphone.openings, 1) << "a first tap keeps the microphone open";
    microphone.deliver(400ms, 0.2F);
    EXPECT_EQ(stop().samples.size(), 8000U);
}

TEST_F(AudioRecorderTest, LeavesOutWhatWasCapturedBeforeThePressAndComesLater) {
    microphone.clock = queue.uptime();
    recorder.press(microphone.clock);
    recorder.press(microphone.clock + 100ms);
    microphone.deliver(300ms, 0.2F);
    ASSERT_TRUE(recorder.startRecording());
    EXPECT_EQ(stop().samples.size(), 3200U);
}

TEST_F(AudioRecorderTest, KeepsTheLastTwoSecondsAtMost) {
    microphone.clock = queue.uptime();
    recorder.press(microphone.clock);
    microphone.deliver(5s, 0.2F);
    ASSERT_TRUE(recorder.startRecording());
    EXPECT_EQ(stop().samples.size(), 32000U);
}

TEST_F(AudioRecorderTest, ForgetsAPressThatWasNothing) {
    for (const bool dropped : {true, false}) { // the other one is forgotten by the listener
        recorder.press(queue.uptime());
        microphone.deliver(300ms, 0.2F);
        EXPECT_TRUE(microphone.isOpen());
        if (dropped)
            recorder.drop();
        else
            queue.advance(2s);
        EXPECT_FALSE(microphone.isOpen());
        EXPECT_THAT(recordings(), IsEmpty());
    }
    ASSERT_TRUE(recorder.startRecording());
    EXPECT_THAT(stop().samples, IsEmpty()) << "what was heard is gone";
}

TEST_F(AudioRecorderTest, LeavesARunningRecordingAloneWhateverIsPressed) {
    recorder.press(queue.uptime());
    ASSERT_TRUE(recorder.startRecording());
    microphone.deliver(1s, 0.2F);
    queue.advance(2s); // past the end of the press
    recorder.press(queue.uptime());
    recorder.drop();
    microphone.deliver(1s, 0.2F);
    EXPECT_EQ(stop().samples.size(), 32000U);
}

TEST_F(AudioRecorderTest, TriesAgainWhenThePressFoundNoMicrophone) {
    microphone.failure = u"No microphone was found."_s;
    recorder.press(queue.uptime());
    EXPECT_THAT(log.lines(), IsEmpty());
    microphone.failure.reset();
    EXPECT_TRUE(recorder.startRecording());
}

// A microphone that goes away

class LostMicrophoneTest : public AudioRecorderTest {
protected:
    LostMicrophoneTest() {
        recorder.onMicrophoneLost = [this] {
            ++losses;
            recording = stop();
        };
        EXPECT_TRUE(recorder.startRecording());
        microphone.deliver(500ms, 0.2F);
    }

    int losses = 0;
    testing::WaveFile recording;
};

TEST_F(LostMicrophoneTest, EndsWithWhatWasHeard) {
    microphone.fail(u"The microphone is gone."_s);
    queue.post([this] { EXPECT_EQ(losses, 0) << "who started it just now may not know of it yet"; });
    queue.runPosted();
    EXPECT_EQ(losses, 1);
    EXPECT_EQ(recording.samples.size(), 8000U);
    EXPECT_TRUE(log.contains(u"🎙️ [Recorder] Microphone lost: The microphone is gone."_s));
    queue.advance(1min);
    EXPECT_EQ(losses, 1);
}

TEST_F(LostMicrophoneTest, CountsOneThatDeliversNothingAsLost) {
    queue.advance(5s); // it has delivered in these
    EXPECT_EQ(losses, 0);
    queue.advance(4999ms);
    EXPECT_EQ(losses, 0);
    queue.advance(1ms);
    EXPECT_EQ(losses, 1);
    EXPECT_EQ(recording.samples.size(), 8000U);
}

TEST_F(LostMicrophoneTest, TellsNobodyOnceTheRecordingIsOver) {
    microphone.fail(u"The microphone is gone."_s);
    stop();
    ASSERT_TRUE(recorder.startRecording());
    queue.runPosted();
    EXPECT_EQ(losses, 0);
    EXPECT_TRUE(recorder.isRecording());
}

// At the end, and after a crash

TEST_F(AudioRecorderTest, TakesARecordingThatIsNotDealtWithAlong) {
    for (const bool isStopped : {false, true}) {
        AudioRecorder ending({queue, microphone, *files}, directory.path(), 10ms);
        ASSERT_TRUE(ending.startRecording());
        microphone.deliver(500ms, 0.2F);
        EXPECT_TRUE(!isStopped || ending.stopRecording());
    }
    EXPECT_THAT(recordings(), IsEmpty());
    queue.runPosted(); // levels that nobody waits for any more
}

TEST_F(AudioRecorderTest, RemovesRecordingsOfACrashAndNothingElse) {
    const QString abandoned = newRecordingPath(directory.path());
    ASSERT_TRUE(makeSndfileRecordingFiles()->create(abandoned)); // its owner is gone at once
    for (const char *name : {"velmo-recording-notes.wav", "velmo-recording-.wav", "song.wav"})
        QFile(directory.filePath(QString::fromUtf8(name))).open(QIODevice::WriteOnly);
    const auto running = recorder.startRecording();
    ASSERT_TRUE(running);

    const auto nextLaunch = makeSndfileRecordingFiles();
    removeAbandonedRecordings(*nextLaunch, directory.path());
    EXPECT_FALSE(QFileInfo::exists(abandoned));
    EXPECT_TRUE(QFileInfo::exists(*running));
    EXPECT_EQ(recordings().size(), 4);
    stop();
    recorder.deleteRecording(*running);
    EXPECT_EQ(recordings().size(), 3);
}

} // namespace

} // namespace velmo
