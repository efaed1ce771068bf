#include "store/private_files.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr mode_t kPrivateDirectory = 0700;

} // namespace

void makePrivateDirectories(const QByteArray &path) {
    if (::mkdir(path.constData(), kPrivateDirectory) == 0 || errno != ENOENT)
        return;
    const qsizetype slash = path.lastIndexOf('/');
    if (slash <= 0)
        return;
    makePrivateDirectories(path.first(slash));
    ::mkdir(path.constData(), kPrivateDirectory);
}

bool makePrivateFile(const QByteArray &path) {
    const int descriptor = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kPrivateFile);
    return descriptor >= 0 && ::close(descriptor) == 0;
}

} // namespace velmo
