#pragma once

#include "platform/audio_length.h"

#include <memory>

namespace velmo {

/// By libsndfile: WAVE, FLAC, Ogg, MP3 and their like. AAC in MPEG-4 ("m4a") is not among them.
[[nodiscard]] std::unique_ptr<AudioLength> makeSndfileAudioLength();

} // namespace velmo
