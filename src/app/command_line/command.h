#pragma once

#include <QStringList>

namespace velmo {

class Composition;

/// What the program's exit status says.
namespace exit_status {
inline constexpr int success = 0;
inline constexpr int failure = 1;    ///< The work could not be done; a sentence on standard error says why.
inline constexpr int usage = 2;      ///< The words of the command line are off.
inline constexpr int notRunning = 3; ///< No application runs that could carry the command out.
} // namespace exit_status

/// One subcommand of `velmo`.
struct Command {
    QLatin1StringView name;
    QLatin1StringView usage;   ///< What follows the name: "FILE...".
    QLatin1StringView summary; ///< One line for the overview.
    /// Runs the command with the words after its name and answers the exit status. Results go to standard
    /// output, log lines and messages to standard error. A QCoreApplication exists; a display is never
    /// touched.
    int (*run)(Composition &composition, const QStringList &arguments);
};

} // namespace velmo
