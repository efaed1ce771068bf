#include "localservice/speech/audio_decoder.h"

#include "support/files.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <sndfile.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr double kSeconds = 0.5;

/// A file of a 400 Hz tone on every channel.
QByteArray toneFile(int format, int rate, int channels, double seconds = kSeconds) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"tone"_s);
    SF_INFO info{};
    info.format = format;
    info.samplerate = rate;
    info.channels = channels;
    SNDFILE *writer = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    std::vector<float> frame(static_cast<size_t>(channels));
    for (int index = 0; index < seconds * rate; ++index) {
        const double angle = 2 * std::numbers::pi * 400 * index / rate;
        std::fill(frame.begin(), frame.end(), static_cast<float>(0.5 * std::sin(angle)));
        sf_writef_float(writer, frame.data(), 1);
    }
    sf_close(writer);
    return velmo::testing::contentOf(path);
}

double loudness(const Sound &sound) {
    double sum = 0;
    for (const int16_t sample : sound.samples)
        sum += static_cast<double>(sample) * sample;
    return std::sqrt(sum / static_cast<double>(sound.samples.size()));
}

QString failureOf(const QByteArray &file) {
    const auto sound = decodeAudio(file);
    return sound ? u"none"_s : sound.error();
}

} // namespace

TEST(AudioDecoder, BecomesMonoAt16000) {
    const std::tuple<const char *, int, int, int> rows[] = {
        {"VelmosOwn", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16000, 1},
        {"FloatStereo48", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 2},
        {"Flac441", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 44100, 2},
        {"Telephone", SF_FORMAT_AU | SF_FORMAT_ULAW, 8000, 1},
        {"Ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 48000, 1},
        {"Studio", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 192000, 6},
    };
    for (const auto &[name, format, rate, channels] : rows) {
        const auto sound = decodeAudio(toneFile(format, rate, channels));
        ASSERT_TRUE(sound) << name << sound.error().toStdString();
        EXPECT_NEAR(sound->seconds(), kSeconds, 0.001) << name;
        EXPECT_NEAR(loudness(*sound), 0.5 / std::numbers::sqrt2 * 32768, 300) << name;
    }
}

TEST(AudioDecoder, RefusesWhatIsNoSound) {
    for (const QByteArray &file : {QByteArray(), QByteArray("hello"), QByteArray(2000, 'x')})
        EXPECT_TRUE(failureOf(file).contains(u"no sound")) << file.size();
}

TEST(AudioDecoder, ReadsWhatIsThereOfACutFile) {
    const auto sound = decodeAudio(toneFile(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16000, 1).first(8044));
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->samples.size(), 4000U);
}

TEST(AudioDecoder, RefusesSoundWithoutEnd) {
    // Half a megabyte of FLAC unfolds into more than the longest sound taken.
    const QByteArray file = toneFile(SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 4000, 1, kLongestSoundSeconds + 1);
    EXPECT_TRUE(failureOf(file).contains(u"longer than 20 minutes"));
}

TEST(AudioDecoder, RefusesRatesThatUnfoldWithoutEnd) {
    EXPECT_TRUE(failureOf(toneFile(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, 1, 4000)).contains(u"sample rate"));
}

TEST(AudioDecoder, TakesWhatIsNoNumberForSilence) {
    QByteArray file = toneFile(SF_FORMAT_WAV | SF_FORMAT_FLOAT, 16000, 1);
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    const qsizetype data = file.size() - 4000 * static_cast<qsizetype>(sizeof notANumber);
    std::memcpy(file.data() + data, &notANumber, sizeof notANumber);

    const auto sound = decodeAudio(file);

    ASSERT_TRUE(sound);
    EXPECT_GT(loudness(*sound), 10000);
}

} // namespace velmo::localservice
