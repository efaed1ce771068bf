#pragma once

#include "audio/speech_rate.h"
#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <vector>

namespace velmo::localservice {

/// Sound as the embedded engine takes it: one channel, at the rate of speech recognition.
struct Sound {
    static constexpr int samplesPerSecond = kSpeechRate;

    std::vector<int16_t> samples;

    [[nodiscard]] double seconds() const { return static_cast<double>(samples.size()) / samplesPerSecond; }
};

/// Longer sound is refused. It is more than the largest body holds in Velmo's own form (17.5 minutes), and
/// keeps a small compressed file from unfolding without end.
inline constexpr double kLongestSoundSeconds = 20 * 60;

/// Decodes what libsndfile reads (WAVE, FLAC, Ogg, MP3 and their like, of any number of channels and any
/// usual rate), mixes it down and resamples it; or a sentence why not.
[[nodiscard]] Result<Sound, QString> decodeAudio(const QByteArray &file);

} // namespace velmo::localservice
