#pragma once

#include <span>

namespace velmo {

/// The largest distance anybody asks for.
inline constexpr int kLargestEditDistance = 2;

/// Levenshtein distance of two sequences, insertion, deletion and substitution costing 1 each, as far as it
/// matters: anything above `limit` (at most kLargestEditDistance) comes out as limit + 1. Linear in the length.
[[nodiscard]] int editDistance(std::span<const char32_t> from, std::span<const char32_t> to, int limit);

} // namespace velmo
