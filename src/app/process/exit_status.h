#pragma once

/// What the program's exit status says.
namespace velmo::exit_status {

inline constexpr int success = 0;
inline constexpr int failure = 1;    ///< The work could not be done; a sentence on standard error says why.
inline constexpr int usage = 2;      ///< The words of the command line are off.
inline constexpr int notRunning = 3; ///< No application runs that could carry the command out.

} // namespace velmo::exit_status
