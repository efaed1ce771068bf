#pragma once

#include <QString>

namespace velmo {

/// What SQLite answers: SQLITE_OK (0), or the reason why not, in extended codes.
using SqliteCode = int;

/// A sentence about a code. It never carries data.
[[nodiscard]] QString describe(SqliteCode code);

/// The reason why a system call failed, errno, in SQLite's words.
[[nodiscard]] SqliteCode codeOfErrno();

/// Whether the code says that the file itself is no intact database.
[[nodiscard]] bool isDamage(SqliteCode code);

} // namespace velmo
