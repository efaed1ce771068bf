#include "audio/mix_down.h"

#include <cmath>
#include <numeric>

namespace velmo {

void mixDown(std::span<const float> frames, int channels, std::vector<float> &mono) {
    mono.clear();
    const auto step = static_cast<std::size_t>(channels);
    for (; frames.size() >= step; frames = frames.subspan(step)) {
        const auto frame = frames.first(step);
        const float sum = std::accumulate(frame.begin(), frame.end(), 0.0F);
        mono.push_back(std::isfinite(sum) ? sum / static_cast<float>(channels) : 0);
    }
}

} // namespace velmo
