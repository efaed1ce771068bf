#pragma once

#include <QByteArray>
#include <QString>

namespace velmo {

struct CommandOutcome;

/// Writes to standard output at once, as UTF-8. Answers false when nobody reads any more (a closed pipe) or
/// the output is full, so that a long run can end.
bool print(const QString &text);
bool print(const QByteArray &bytes);

/// Writes one message and a line end to standard error.
void printError(const QString &message);

/// Prints what became of a command and answers its exit status.
int printOutcome(const CommandOutcome &outcome);

} // namespace velmo
