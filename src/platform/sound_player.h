#pragma once

#include "base/interface.h"

namespace velmo {

/// The cues of a dictation. The names are the roles; a back-end maps them to sounds of the desktop's theme.
enum class SoundCue {
    Tink, ///< A recording began.
    Pop,  ///< A recording ended.
    Funk, ///< A recording was thrown away.
};

/// Short sounds. Main thread; never waits; a sound that does not exist or cannot be played is silence.
class SoundPlayer : public Interface {
public:
    virtual void play(SoundCue cue) = 0;
};

} // namespace velmo
