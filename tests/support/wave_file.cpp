#include "support/wave_file.h"

#include <QFile>
#include <cmath>
#include <numeric>
#include <sndfile.h>

namespace velmo::testing {

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

double loudness(std::span<const float> samples) {
    const double squares = std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0);
    return samples.empty() ? 0 : std::sqrt(squares / static_cast<double>(samples.size()));
}

} // namespace velmo::testing
