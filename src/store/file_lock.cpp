#include "store/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace velmo {

namespace {

using namespace std::chrono_literals;

/// Whoever holds the lock has it for some milliseconds.
constexpr auto kRetryInterval = 2ms;

} // namespace

Result<FileLock, SqliteCode> FileLock::acquire(const QByteArray &path, Kind kind,
                                               std::chrono::milliseconds patience) {
    FileLock lock(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (lock.m_descriptor < 0)
        return failed(codeOfErrno());
    const int operation = (kind == Kind::Shared ? LOCK_SH : LOCK_EX) | LOCK_NB;
    const auto end = std::chrono::steady_clock::now() + patience;
    while (::flock(lock.m_descriptor, operation) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return failed(codeOfErrno());
        if (std::chrono::steady_clock::now() >= end)
            return failed(SqliteCode(SQLITE_BUSY));
        std::this_thread::sleep_for(kRetryInterval);
    }
    return lock;
}

FileLock::FileLock(FileLock &&other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FileLock::~FileLock() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace velmo
