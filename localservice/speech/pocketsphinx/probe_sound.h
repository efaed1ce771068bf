#pragma once

#include "localservice/speech/audio_decoder.h"

namespace velmo::localservice {

/// Sound that keeps a recogniser as busy as speech does, made from nothing: a voice that glides from vowel to
/// vowel, with hissing in between. It means nothing; engines measure their speed with it. (Silence and noise
/// would not do: they are left out before the search begins.)
[[nodiscard]] Sound probeSound(double seconds);

} // namespace velmo::localservice
