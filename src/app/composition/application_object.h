#pragma once

#include <QCoreApplication>
#include <QStringList>
#include <memory>

namespace velmo {

/// The Qt application of this process: one with windows where Velmo is started as the desktop application and there is a
/// display to show them on. A subcommand touches no display; and without one, Qt would end the process on the spot, where
/// a sentence and an exit status are called for.
///
/// Signals that ask the process to end are kept from the threads that an application with windows starts; make a
/// TerminationSignals to receive them.
///
/// @param arguments the words after the program's name. @param argc outlives what is made, as does argv.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeApplicationObject(const QStringList &arguments, int &argc,
                                                                      char **argv);

} // namespace velmo
