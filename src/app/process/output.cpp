#include "app/process/output.h"

#include "app/process/exit_status.h"
#include "base/descriptor_output.h"
#include "base/utf8.h"
#include "platform/application_bus.h"

#include <unistd.h>

namespace velmo {

bool print(const QString &text) {
    return print(utf8(text));
}

bool print(const QByteArray &bytes) {
    return writeAll(STDOUT_FILENO, bytes);
}

void printError(const QString &message) {
    writeAll(STDERR_FILENO, utf8(message) + '\n');
}

int printOutcome(const CommandOutcome &outcome) {
    if (!outcome.message.isEmpty())
        printError(outcome.message);
    return print(outcome.output) ? outcome.status : exit_status::failure;
}

} // namespace velmo
