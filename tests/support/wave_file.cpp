#include "support/wave_file.h"

#include <QFile>
#include <cmath>
#include <numeric>
#include <sndfile.h>

namespace velmo::testing {

namespace {

constexpr int kSampleRate = 16000;

}

WaveFile readWave(const QString &path) {
    SF_INFO info{};
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file)
        return {};
    WaveFile wave{info.samplerate, info.channels, info.format == (SF_FORMAT_WAV | SF_FORMAT_PCM_16), {}};
    wave.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_read_float(file, wave.samples.data(), static_cast<sf_count_t>(wave.samples.size()));
    sf_close(file);
    return wave;
}

void writeWave(const QString &path, std::span<const float> samples) {
    SF_INFO info{};
    info.samplerate = kSampleRate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    sf_write_float(file, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(file);
}

void writeSilence(const QString &path, double seconds) {
    writeWave(path, std::vector<float>(static_cast<std::size_t>(seconds * kSampleRate)));
}

double loudness(std::span<const float> samples) {
    const double squares = std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0);
    return samples.empty() ? 0 : std::sqrt(squares / static_cast<double>(samples.size()));
}

} // namespace velmo::testing
