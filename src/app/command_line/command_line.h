#pragma once

#include <QStringList>

namespace velmo {

class Composition;

/// Runs what the words after the program's name ask for and answers the exit status.
int runCommandLine(Composition &composition, const QStringList &arguments);

} // namespace velmo
