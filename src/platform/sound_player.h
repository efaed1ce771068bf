#pragma once

namespace velmo {

/// The cues of a dictation. The names are the roles; a back-end maps them to sounds of the desktop's theme.
enum class SoundCue {
    Tink, ///< A recording began.
    Pop,  ///< A recording ended.
    Funk, ///< A recording was thrown away.
};

/// Short sounds. Main thread; never waits; a sound that does not exist or cannot be played is silence.
class SoundPlayer {
public:
    SoundPlayer() = default;
    SoundPlayer(const SoundPlayer &) = delete;
    SoundPlayer &operator=(const SoundPlayer &) = delete;
    virtual ~SoundPlayer() = default;

    virtual void play(SoundCue cue) = 0;
};

} // namespace velmo
