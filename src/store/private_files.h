#pragma once

#include <QByteArray>
#include <sys/types.h>

/// Files and folders that nobody but their owner may look into. Paths are in the file system's own encoding.
namespace velmo {

/// The mode of such a file.
inline constexpr mode_t kPrivateFile = 0600;

/// Makes the folder and those it needs. What exists stays as it is; whether it worked shows when something is put there.
void makePrivateDirectories(const QByteArray &path);

/// Makes an empty file. SQLite gives what it keeps beside a file the mode of that one.
/// @return false, with the reason in errno (EEXIST: there is one), when it could not be made.
[[nodiscard]] bool makePrivateFile(const QByteArray &path);

} // namespace velmo
