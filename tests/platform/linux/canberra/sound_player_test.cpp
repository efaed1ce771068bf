#include "platform/linux/canberra/sound_player.h"

#include "base/qt_main_queue.h"
#include "dictation/capture/audio_recorder.h"
#include "platform/linux/pulse/connection.h"
#include "platform/linux/pulse/microphone.h"
#include "platform/linux/sndfile/sndfile_audio_length.h"
#include "platform/linux/sndfile/sndfile_recording_files.h"
#include "support/pulse_server.h"
#include "support/wait_until.h"
#include "support/wave_file.h"

#include <QDir>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

using testing::PulseServer;

/// A sound theme of the test's own, heard by a microphone on the null sink.
class CanberraSoundPlayerTest : public ::testing::Test {
protected:
    CanberraSoundPlayerTest() {
        qputenv("XDG_DATA_HOME", themes.path().toUtf8());
        qputenv("XDG_DATA_DIRS", "/nowhere");
        QDir(themes.path()).mkpath(u"sounds/freedesktop/stereo"_s);
        server.wakeMicrophone();
    }

    void addSound(const QString &name, double seconds) {
        const auto files = makeSndfileRecordingFiles();
        const auto file = files->create(themes.filePath(u"sounds/freedesktop/stereo/%1.wav"_s.arg(name)));
        std::vector<float> tone;
        for (int i = 0; i < static_cast<int>(seconds * 16000); ++i)
            tone.push_back(i / 16 % 2 == 0 ? 0.5F : -0.5F);
        (*file)->write(tone);
    }

    [[nodiscard]] std::unique_ptr<SoundPlayer> makePlayer() const {
        return makeCanberraSoundPlayer(makeSndfileAudioLength());
    }

    PulseServer server{PulseServer::virtualMicrophone()};
    QTemporaryDir themes;
};

/// Seconds in which something can be heard.
double loudSeconds(const testing::WaveFile &recording) {
    const auto loud = std::count_if(recording.samples.begin(), recording.samples.end(),
                                    [](float sample) { return std::abs(sample) > 0.1F; });
    return static_cast<double>(loud) / recording.sampleRate;
}

TEST_F(CanberraSoundPlayerTest, PlaysShortSoundsAndNoOthers) {
    addSound(u"message-new-instant"_s, 0.2); // Tink
    addSound(u"complete"_s, 0.5);            // Pop: too long; and Funk has none
    QtMainQueue queue;
    const auto microphone = makePulseMicrophone(std::make_shared<pulse::Connection>(), queue);
    const auto files = makeSndfileRecordingFiles();
    AudioRecorder recorder({queue, *microphone, *files}, themes.path());
    const auto path = recorder.startRecording();
    ASSERT_TRUE(path);

    bool isHeard = false;
    bool isOver = false;
    recorder.onAudioLevel = [&](float level) {
        isOver = isHeard && level == 0;
        isHeard = isHeard || level > 0;
    };
    const auto player = makePlayer();
    player->play(SoundCue::Pop);
    player->play(SoundCue::Funk);
    for (int attempt = 0; attempt < 10 && !isHeard;
         ++attempt) { // a busy machine's cue may be too late to be played
        player->play(SoundCue::Tink);
        (void)testing::waitUntil([&] { return isHeard; }, 2s);
    }
    EXPECT_TRUE(testing::waitUntil([&] { return isOver; }));
    ASSERT_TRUE(recorder.stopRecording());
    const double seconds = loudSeconds(testing::readWave(*path));
    EXPECT_GT(seconds, 0.1);
    EXPECT_LT(seconds, 0.35) << "Pop alone lasts longer";
}

qsizetype threads() {
    return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

TEST_F(CanberraSoundPlayerTest, IsSilentWithoutAServerThatAnswers) {
    addSound(u"dialog-warning"_s, 0.2);
    const qsizetype before = threads();
    auto player = makePlayer();
    for (const int end : {SIGSTOP, SIGKILL}) {
        server.signal(end);
        player->play(SoundCue::Funk); // does not wait
        makePlayer()->play(SoundCue::Funk);
    }
    player.reset();
    EXPECT_TRUE(testing::waitUntil([before] { return threads() == before; })) << "a thread hangs on";
}

} // namespace

} // namespace velmo
