#pragma once

#include <QtGlobal>

namespace velmo::localservice {

/// Far beyond what people dictate with; they bound what one account can take of the disk. Lengths are counted in
/// UTF-16 units.
inline constexpr qint64 kMostWords = 100'000;
inline constexpr qsizetype kLongestWord = 1'000;
inline constexpr qint64 kMostSnippets = 10'000;
inline constexpr qsizetype kLongestTrigger = 1'000;
inline constexpr qsizetype kLongestExpansion = 100'000;
inline constexpr qint64 kMostTotal = 1'000'000'000'000; ///< Words or dictations of one account.
inline constexpr qint64 kMostWordsOfDictation = 1'000'000;

} // namespace velmo::localservice
