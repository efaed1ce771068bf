#pragma once

#include "base/interface.h"

#include <functional>

namespace velmo {

/// Where the level meter gets its input levels from. Main thread.
class AudioLevelSource : private Unmovable {
public:
    /// Called with the level, 0 to 1, of each captured block. Set by whoever shows levels; emptied when the
    /// recording stops.
    std::function<void(float level)> onAudioLevel;

protected:
    ~AudioLevelSource() = default;
};

} // namespace velmo
