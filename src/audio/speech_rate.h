#pragma once

namespace velmo {

/// Samples a second of sound that speech is recognised in: of recordings, and of what the embedded engine hears.
inline constexpr int kSpeechRate = 16000;

} // namespace velmo
