#pragma once

#include <span>
#include <vector>

namespace velmo {

/// One channel out of several: the mean of each frame of interleaved samples, in place of what `mono` held. What is no
/// number is silence, as a filter behind would never get rid of it.
void mixDown(std::span<const float> frames, int channels, std::vector<float> &mono);

} // namespace velmo
