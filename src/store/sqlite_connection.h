#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "store/sqlite_code.h"

#include <QByteArray>
#include <chrono>
#include <memory>
#include <sqlite3.h>

namespace velmo {

/// A prepared statement. As in SQLite, parameters count from 1 and columns from 0.
class SqliteStatement {
public:
    /// Makes the statement ready for its next use when the scope of one use ends, which also ends the
    /// transaction of a lone SELECT.
    class Use : private Unmovable {
    public:
        explicit Use(const SqliteStatement &statement) : m_statement(statement.get()) {}
        ~Use() { sqlite3_reset(m_statement); }

        void bindText(int parameter, const QByteArray &utf8);
        void bindData(int parameter, const QByteArray &bytes);
        void bindInteger(int parameter, qint64 value);

        /// SQLITE_ROW, SQLITE_DONE or a failure, that of an earlier bind among them.
        [[nodiscard]] SqliteCode step();

        /// The SQLite type of a column: SQLITE_TEXT, SQLITE_INTEGER …
        [[nodiscard]] int type(int column) const { return sqlite3_column_type(m_statement, column); }
        [[nodiscard]] qint64 integer(int column) const { return sqlite3_column_int64(m_statement, column); }
        [[nodiscard]] QByteArray bytes(int column) const;

    private:
        void keep(SqliteCode code);

        sqlite3_stmt *m_statement;
        SqliteCode m_bindFailure = SQLITE_OK;
    };

    explicit SqliteStatement(sqlite3_stmt *statement) : m_statement(statement) {}
    [[nodiscard]] sqlite3_stmt *get() const { return m_statement.get(); }

private:
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// A connection to an SQLite file that exists. One thread at a time.
class SqliteConnection {
public:
    enum class Access {
        ReadWrite, ///< Reading alone where the file or its directory allows no more.
        Immutable, ///< Reads the file as nobody changes it: no locks, no files beside it.
    };

    /// Opens the file and waits up to the given time wherever another connection is in the way.
    [[nodiscard]] static Result<SqliteConnection, SqliteCode> open(const QByteArray &file, Access access,
                                                                   std::chrono::milliseconds patience);

    /// Runs statements whose results do not matter.
    [[nodiscard]] SqliteCode run(const char *sql) const;

    /// The first column of the first row.
    [[nodiscard]] Result<QByteArray, SqliteCode> answer(const char *sql) const;

    [[nodiscard]] Result<SqliteStatement, SqliteCode> prepare(const char *sql) const;

    /// Whether closing the last connection to the file leaves its write-ahead log where it is. By default SQLite then
    /// copies the log into the file and removes it, by name.
    void keepLogOnClose(bool keep) const;

    /// Whether the path no longer names the file this connection has open.
    [[nodiscard]] bool fileHasMoved() const;

    [[nodiscard]] Access access() const { return m_access; }
    [[nodiscard]] sqlite3 *get() const { return m_database.get(); }

private:
    struct Close {
        void operator()(sqlite3 *database) const { sqlite3_close_v2(database); }
    };
    using Database = std::unique_ptr<sqlite3, Close>;

    SqliteConnection(Database database, Access access) : m_database(std::move(database)), m_access(access) {}

    Database m_database;
    Access m_access;
};

} // namespace velmo
