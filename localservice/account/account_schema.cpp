#include "localservice/account/account_schema.h"

#include "store/sqlite_transaction.h"

namespace velmo::localservice {

namespace {

// "Vlac" in the file's header tells our files from other programs' databases; the version is that of the tables.
constexpr const char *kApplicationId = "1449943395";
constexpr const char *kVersion = "1";

/// word: a tombstone is a word that was removed and that other devices may still have.
/// known: what a session was told in its last pull or told us in its last push, whichever was later.
constexpr const char *kCreate = R"(
    PRAGMA application_id = 1449943395;
    PRAGMA user_version = 1;
    CREATE TABLE account (
        id TEXT PRIMARY KEY NOT NULL,
        email TEXT NOT NULL UNIQUE COLLATE NOCASE,
        name TEXT NOT NULL,
        total_words INTEGER NOT NULL DEFAULT 0,
        total_sessions INTEGER NOT NULL DEFAULT 0
    ) STRICT, WITHOUT ROWID;
    CREATE TABLE identity_token (
        hash BLOB PRIMARY KEY NOT NULL,
        email TEXT NOT NULL,
        expires INTEGER NOT NULL
    ) STRICT, WITHOUT ROWID;
    CREATE TABLE session (
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        account TEXT NOT NULL REFERENCES account ON DELETE CASCADE,
        token_hash BLOB NOT NULL UNIQUE
    ) STRICT;
    CREATE INDEX session_account ON session (account);
    CREATE TABLE word (
        account TEXT NOT NULL REFERENCES account ON DELETE CASCADE,
        word TEXT NOT NULL,
        is_tombstone INTEGER NOT NULL,
        PRIMARY KEY (account, word)
    ) STRICT, WITHOUT ROWID;
    CREATE TABLE snippet (
        account TEXT NOT NULL REFERENCES account ON DELETE CASCADE,
        key TEXT NOT NULL,
        id TEXT NOT NULL,
        trigger TEXT NOT NULL,
        expansion TEXT NOT NULL,
        PRIMARY KEY (account, key)
    ) STRICT, WITHOUT ROWID;
    CREATE TABLE known (
        session INTEGER NOT NULL REFERENCES session ON DELETE CASCADE,
        list TEXT NOT NULL,
        key TEXT NOT NULL,
        PRIMARY KEY (session, list, key)
    ) STRICT, WITHOUT ROWID;
)";

/// Words must not reach a temporary file elsewhere. "pushed" takes in the list of one push.
constexpr const char *kSettings = R"(
    PRAGMA temp_store = MEMORY;
    PRAGMA foreign_keys = ON;
    PRAGMA journal_mode = WAL;
    PRAGMA synchronous = FULL;
    CREATE TEMP TABLE pushed (key TEXT PRIMARY KEY NOT NULL) STRICT, WITHOUT ROWID;
)";

/// SQLITE_OK when it says so, SQLITE_NOTADB when it says something else.
SqliteCode expect(const SqliteConnection &connection, const char *question, const char *answer) {
    const auto given = connection.answer(question);
    if (!given)
        return given.error();
    return *given == answer ? SQLITE_OK : SQLITE_NOTADB;
}

SqliteCode expectAccounts(const SqliteConnection &connection) {
    const SqliteCode code = expect(connection, "PRAGMA application_id", kApplicationId);
    return code == SQLITE_OK ? expect(connection, "PRAGMA user_version", kVersion) : code;
}

/// Two processes may begin at once: the second finds the tables of the first.
SqliteCode ensureTables(const SqliteConnection &connection) {
    const SqliteTransaction transaction(connection);
    if (const SqliteCode code = transaction.begin(); code != SQLITE_OK)
        return code;
    const SqliteCode isEmpty = expect(connection, "SELECT count(*) FROM sqlite_schema", "0");
    if (isEmpty == SQLITE_NOTADB)
        return expectAccounts(connection);
    if (isEmpty != SQLITE_OK)
        return isEmpty;
    const SqliteCode code = connection.run(kCreate);
    return code == SQLITE_OK ? transaction.commit() : code;
}

/// What is half damaged could still be written to, and would seem to have lost accounts.
SqliteCode expectIntact(const SqliteConnection &connection) {
    const SqliteCode code = expect(connection, "PRAGMA quick_check(1)", "ok");
    return code == SQLITE_NOTADB ? SQLITE_CORRUPT : code;
}

} // namespace

SqliteCode prepareAccounts(const SqliteConnection &connection) {
    SqliteCode code = ensureTables(connection);
    if (code == SQLITE_OK)
        code = expectIntact(connection);
    return code == SQLITE_OK ? connection.run(kSettings) : code;
}

} // namespace velmo::localservice
