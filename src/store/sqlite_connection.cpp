#include "store/sqlite_connection.h"

namespace velmo {

namespace {

QByteArray fileUri(const QByteArray &file, const char *parameters) {
    return "file:" + file.toPercentEncoding("/") + parameters;
}

} // namespace

void SqliteStatement::Use::bindText(int parameter, const QByteArray &utf8) {
    keep(sqlite3_bind_text64(m_statement, parameter, utf8.constData(),
                             static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void SqliteStatement::Use::bindData(int parameter, const QByteArray &bytes) {
    keep(sqlite3_bind_blob64(m_statement, parameter, bytes.constData(),
                             static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT));
}

void SqliteStatement::Use::bindInteger(int parameter, qint64 value) {
    keep(sqlite3_bind_int64(m_statement, parameter, value));
}

void SqliteStatement::Use::keep(SqliteCode code) {
    if (m_bindFailure == SQLITE_OK)
        m_bindFailure = code;
}

SqliteCode SqliteStatement::Use::step() {
    return m_bindFailure == SQLITE_OK ? sqlite3_step(m_statement) : m_bindFailure;
}

QByteArray SqliteStatement::Use::bytes(int column) const {
    const void *data = sqlite3_column_blob(m_statement, column);
    return {static_cast<const char *>(data), sqlite3_column_bytes(m_statement, column)};
}

Result<SqliteConnection, SqliteCode> SqliteConnection::open(const QByteArray &file, Access access,
                                                            std::chrono::milliseconds patience) {
    sqlite3 *opened = nullptr;
    // Whoever holds a connection lets one thread use it at a time, so SQLite's own mutexes can go.
    const int flags = SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                      (access == Access::Immutable ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    const QByteArray uri = fileUri(file, access == Access::Immutable ? "?immutable=1" : "");
    const SqliteCode code = sqlite3_open_v2(uri.constData(), &opened, flags, nullptr);
    Database database(opened);
    if (code != SQLITE_OK)
        return failed(code);
    sqlite3_busy_timeout(opened, static_cast<int>(patience.count()));
    return SqliteConnection(std::move(database), access);
}

SqliteCode SqliteConnection::run(const char *sql) const {
    return sqlite3_exec(get(), sql, nullptr, nullptr, nullptr);
}

Result<QByteArray, SqliteCode> SqliteConnection::answer(const char *sql) const {
    const auto statement = prepare(sql);
    if (!statement)
        return failed(statement.error());
    SqliteStatement::Use use(*statement);
    const SqliteCode code = use.step();
    if (code != SQLITE_ROW)
        return failed(code);
    return use.bytes(0);
}

Result<SqliteStatement, SqliteCode> SqliteConnection::prepare(const char *sql) const {
    sqlite3_stmt *statement = nullptr;
    const SqliteCode code =
        sqlite3_prepare_v3(get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    SqliteStatement owned(statement);
    if (code != SQLITE_OK)
        return failed(code);
    return owned;
}

void SqliteConnection::keepLogOnClose(bool keep) const {
    sqlite3_db_config(get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keep ? 1 : 0, nullptr);
}

bool SqliteConnection::fileHasMoved() const {
    int moved = 0;
    sqlite3_file_control(get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

} // namespace velmo
