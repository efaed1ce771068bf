#pragma once

#include <QStringList>
#include <functional>

namespace velmo {

/// Makes a part, or hands out the one that is made: what no run comes to need is never made.
template <class Part>
using Lazy = std::function<Part()>;

/// How a subcommand of `velmo` is called.
struct CommandWords {
    QLatin1StringView name;
    QLatin1StringView usage;   ///< What follows the name: "FILE...".
    QLatin1StringView summary; ///< One line for the overview.
};

/// One subcommand of `velmo`.
struct Command {
    CommandWords words;
    /// Runs the command with the words after its name and answers the exit status. Results go to standard
    /// output, log lines and messages to standard error. A QCoreApplication exists; a display is never
    /// touched.
    std::function<int(const QStringList &arguments)> run;
};

} // namespace velmo
