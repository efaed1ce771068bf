#include "store/sqlite_code.h"

#include <cerrno>
#include <sqlite3.h>

namespace velmo {

QString describe(SqliteCode code) {
    return QString::fromUtf8(sqlite3_errstr(code));
}

bool isDamage(SqliteCode code) {
    const int primary = code & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

SqliteCode codeOfErrno() {
    switch (errno) {
    case ENOSPC:
    case EDQUOT:
        return SQLITE_FULL;
    case EACCES:
    case EPERM:
    case EROFS:
        return SQLITE_READONLY;
    default:
        return SQLITE_CANTOPEN;
    }
}

} // namespace velmo
