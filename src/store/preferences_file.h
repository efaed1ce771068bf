#pragma once

#include "store/file_lock.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <optional>

namespace velmo {

/// How long an operation waits for other processes unless told otherwise. Ours hold a lock for some milliseconds
/// at most, so whoever waits this long meets a stopped process; and desktops call a window unresponsive after about
/// 5 s.
inline constexpr std::chrono::milliseconds kPatience{2000};

/// The place of a preferences file: the file, what SQLite keeps beside it ("-wal", "-shm"), and a lock file
/// (".lock") under which files are begun and set aside. Any thread.
class PreferencesFile {
public:
    explicit PreferencesFile(const QString &path);

    [[nodiscard]] const QByteArray &path() const { return m_path; }
    /// Also when it may not be looked at.
    [[nodiscard]] bool exists() const;

    /// Keeps the file from being exchanged while the result lives. SQLite opens a log later than its file, and
    /// removes it, by name: a connection that got one file with the log of another, or removed a log that had come
    /// to belong to another, would lose what others committed. So this is held from before a connection opens the
    /// file until it has read from it, and while one that removes the log is closed.
    [[nodiscard]] Result<std::optional<FileLock>, SqliteCode> holdInPlace() const;

    /// Takes the access of other users away where somebody gave it to them.
    void keepPrivate() const;

    /// Sees to it that the path names an intact preferences file: sets aside what is damaged or another
    /// program's, with a log line, and begins a file where there is none. Several processes may try at once;
    /// one of them does it.
    [[nodiscard]] SqliteCode ensure() const;

private:
    [[nodiscard]] SqliteCode setAside() const;
    [[nodiscard]] SqliteCode begin() const;

    QByteArray m_path;
};

} // namespace velmo
