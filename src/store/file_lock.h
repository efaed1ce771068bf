#pragma once

#include "base/result.h"
#include "store/sqlite_code.h"

#include <QByteArray>
#include <chrono>

namespace velmo {

/// A lock between processes and threads, on a file that exists for this alone and stays: were it removed, two could
/// hold "the" lock. Given back at the end of its life, or of the process.
class FileLock {
public:
    enum class Kind {
        Shared,   ///< Beside other shared ones.
        Exclusive ///< Alone.
    };

    /// Waits for the lock. Fails with SQLITE_BUSY when the time is over, with another code when there can be no lock
    /// file (SQLITE_READONLY, SQLITE_FULL …).
    [[nodiscard]] static Result<FileLock, SqliteCode> acquire(const QByteArray &path, Kind kind,
                                                              std::chrono::milliseconds patience);

    FileLock(FileLock &&other) noexcept;
    FileLock &operator=(FileLock &&) = delete;
    ~FileLock();

private:
    explicit FileLock(int descriptor) : m_descriptor(descriptor) {}

    int m_descriptor;
};

} // namespace velmo
