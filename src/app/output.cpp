#include "app/output.h"

#include "base/utf8.h"

#include <cerrno>
#include <unistd.h>

namespace velmo {

namespace {

bool writeAll(int descriptor, const QByteArray &bytes) {
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count =
            ::write(descriptor, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += count;
    }
    return true;
}

} // namespace

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
