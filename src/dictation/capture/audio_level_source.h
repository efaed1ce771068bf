#pragma once

#include <functional>

namespace velmo {

/// Where the level meter gets its input levels from. Main thread.
class AudioLevelSource {
public:
    AudioLevelSource() = default;
    AudioLevelSource(const AudioLevelSource &) = delete;
    AudioLevelSource &operator=(const AudioLevelSource &) = delete;

    /// Called with the level, 0 to 1, of each captured block. Set by whoever shows levels; emptied when the
    /// recording stops.
    std::function<void(float level)> onAudioLevel;

protected:
    ~AudioLevelSource() = default;
};

} // namespace velmo
