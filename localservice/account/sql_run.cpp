#include "localservice/account/sql_run.h"

namespace velmo::localservice {

void SqlRun::note(SqliteCode code) {
    const bool isFailure = code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW;
    if (isFailure && m_failure == SQLITE_OK)
        m_failure = code;
}

std::optional<SqliteStatement> SqlRun::prepare(const char *sql) {
    if (m_failure != SQLITE_OK)
        return std::nullopt;
    auto statement = m_connection.prepare(sql);
    if (!statement) {
        note(statement.error());
        return std::nullopt;
    }
    return std::move(*statement);
}

QString textIn(const SqliteStatement::Use &row, int column) {
    return QString::fromUtf8(row.bytes(column));
}

} // namespace velmo::localservice
