#pragma once

#include "app/command_line/command.h"

#include <vector>

namespace velmo {

class ApplicationBus;

/// What the words of a command line can ask for; all of it outlives the run.
struct CommandLine {
    std::vector<Command> commands; ///< In the order of the overview.
    /// Who may wait for an address of Velmo's own scheme: the first of them that is there gets it.
    std::vector<Lazy<ApplicationBus &>> addressees;
};

/// Runs what the words after the program's name ask for, of which there is at least one, and answers the exit status.
int runCommandLine(const CommandLine &commandLine, const QStringList &arguments);

} // namespace velmo
