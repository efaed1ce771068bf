#pragma once

#include "base/interface.h"
#include "localservice/speech/audio_decoder.h"

#include <span>
#include <vector>

namespace velmo::localservice {

/// Tells voice from other sound, frame by frame as it comes. Used by one thread at a time.
class VoiceDetector : public Interface {
public:
    static constexpr int samplesPerFrame = 512;
    static constexpr double frameSeconds = double(samplesPerFrame) / Sound::samplesPerSecond;

    /// How likely each of the frames that follow is voice, from 0 to 1. `samples`, with full scale at 1, are whole frames.
    [[nodiscard]] virtual std::vector<float> hear(std::span<const float> samples) = 0;
};

} // namespace velmo::localservice
