#pragma once

#include "store/preferences.h"
#include "store/sqlite_connection.h"

namespace velmo {

/// The rows of one open preferences file: key, kind ("string", "bool", "integer", "date", "data") and value. A
/// date is stored as nanoseconds since 1970, a string as UTF-8. A row whose value does not fit its kind reads
/// as absent. One thread at a time.
class PreferenceTable {
public:
    /// What an SQLite file turns out to hold.
    enum class Content {
        Preferences,
        Nothing,     ///< No table at all: an empty file.
        AnotherThing ///< Damaged, no database, or some other program's.
    };

    /// Begins the table in an empty file. Nothing is synchronised with the disk.
    [[nodiscard]] static SqliteCode create(const SqliteConnection &connection);

    /// Looks at the beginning of the file. The failure is one that says nothing about the content.
    [[nodiscard]] static Result<Content, SqliteCode> contentOf(const SqliteConnection &connection);

    /// Takes over a connection to a file that holds preferences.
    [[nodiscard]] static Result<PreferenceTable, SqliteCode> open(SqliteConnection connection);

    [[nodiscard]] Result<std::optional<PreferenceValue>, SqliteCode> value(const QString &key) const;
    [[nodiscard]] Result<std::map<QString, PreferenceValue>, SqliteCode> all() const;

    /// One transaction: reads, asks for the change, writes. Fails with SQLITE_READONLY_DBMOVED when another
    /// file has taken the place of this one.
    [[nodiscard]] SqliteCode change(const QString &key, const Preferences::Change &change) const;

    [[nodiscard]] const SqliteConnection &connection() const { return m_connection; }

private:
    PreferenceTable(SqliteConnection connection, SqliteStatement select)
        : m_connection(std::move(connection)), m_select(std::move(select)) {}

    [[nodiscard]] SqliteCode put(const QString &key, const PreferenceValue &value) const;
    [[nodiscard]] SqliteCode erase(const QString &key) const;

    SqliteConnection m_connection;
    SqliteStatement m_select; ///< Kept, because reading one value is what happens all the time.
};

} // namespace velmo
