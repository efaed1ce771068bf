#include "app/command_line/output.h"

#include "base/descriptor_output.h"
#include "base/utf8.h"

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

} // namespace velmo
