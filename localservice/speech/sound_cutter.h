#pragma once

#include "base/interface.h"
#include "localservice/speech/audio_decoder.h"

#include <span>
#include <vector>

namespace velmo::localservice {

/// Sound to be recognised by itself.
struct SoundPiece {
    Sound sound;
    double voiceSeconds = 0; ///< How much of it is voice, each moment by its likelihood.
};

/// Takes sound as it comes and cuts it into pieces. Used by one thread at a time.
class SoundCutter : public Interface {
public:
    /// The pieces that are finished by now.
    [[nodiscard]] virtual std::vector<SoundPiece> append(std::span<const int16_t> samples) = 0;

    /// No more sound comes: the pieces in the rest.
    [[nodiscard]] virtual std::vector<SoundPiece> finish() = 0;
};

} // namespace velmo::localservice
