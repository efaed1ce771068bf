#pragma once

#include "base/interface.h"
#include "store/sqlite_connection.h"

namespace velmo {

/// A write transaction, taken back at the end of its scope unless it was committed.
class SqliteTransaction : private Unmovable {
public:
    explicit SqliteTransaction(const SqliteConnection &connection) : m_connection(connection) {}
    ~SqliteTransaction() {
        if (sqlite3_get_autocommit(m_connection.get()) == 0)
            (void)m_connection.run("ROLLBACK");
    }

    /// Takes the write lock at once: a transaction that begins by reading cannot get it any more when another
    /// process writes in between.
    [[nodiscard]] SqliteCode begin() const { return m_connection.run("BEGIN IMMEDIATE"); }
    [[nodiscard]] SqliteCode commit() const { return m_connection.run("COMMIT"); }

private:
    const SqliteConnection &m_connection;
};

} // namespace velmo
