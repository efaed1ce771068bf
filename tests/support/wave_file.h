#pragma once

#include <QString>
#include <span>
#include <vector>

namespace velmo::testing {

/// A sound file as other programs read it.
struct WaveFile {
    int sampleRate = 0;
    int channels = 0;
    bool is16BitWave = false;
    std::vector<float> samples;
};

/// Everything zero when the file is not readable sound.
[[nodiscard]] WaveFile readWave(const QString &path);

/// Makes a mono 16-bit recording at 16 kHz: of these samples, or of nothing.
void writeWave(const QString &path, std::span<const float> samples);
void writeSilence(const QString &path, double seconds);

/// The root mean square.
[[nodiscard]] double loudness(std::span<const float> samples);

} // namespace velmo::testing
