#include "store/preference_table.h"

#include "base/utf8.h"
#include "store/sqlite_transaction.h"

namespace velmo {

namespace {

using namespace std::chrono;

/// "Vlmo" in the file's header tells our files from other programs' databases.
constexpr const char *kApplicationId = "1449946479";

/// The log mode comes last, so that all is in the one file when it is done.
constexpr const char *kCreate =
    "PRAGMA synchronous = OFF;"
    "BEGIN;"
    "PRAGMA application_id = 1449946479;"
    "CREATE TABLE preference (key TEXT PRIMARY KEY NOT NULL, kind TEXT NOT NULL, value ANY NOT NULL)"
    " STRICT, WITHOUT ROWID;"
    "COMMIT;"
    "PRAGMA journal_mode = WAL;";

constexpr const char *kSelect = "SELECT kind, value FROM preference WHERE key = ?1";

constexpr const char *kString = "string";
constexpr const char *kBool = "bool";
constexpr const char *kInteger = "integer";
constexpr const char *kDate = "date";
constexpr const char *kData = "data";

/// The value in two columns, kind and value.
std::optional<PreferenceValue> valueIn(const SqliteStatement::Use &row, int kindColumn) {
    const QByteArray kind = row.bytes(kindColumn);
    const int column = kindColumn + 1;
    const int type = row.type(column);
    if (kind == kString && type == SQLITE_TEXT)
        return fromUtf8(row.bytes(column));
    if (kind == kData && type == SQLITE_BLOB)
        return row.bytes(column);
    if (type != SQLITE_INTEGER)
        return std::nullopt;
    const qint64 number = row.integer(column);
    if (kind == kInteger)
        return number;
    if (kind == kDate)
        return Date(duration_cast<Date::duration>(nanoseconds(number)));
    if (kind == kBool && (number == 0 || number == 1))
        return number == 1;
    return std::nullopt;
}

/// Binds a value of any kind to two parameters, kind and value.
struct BindValue {
    SqliteStatement::Use &use;
    int kindParameter;

    void operator()(const QString &text) const {
        use.bindText(kindParameter, kString);
        use.bindText(kindParameter + 1, utf8(text));
    }
    void operator()(const QByteArray &data) const {
        use.bindText(kindParameter, kData);
        use.bindData(kindParameter + 1, data);
    }
    void operator()(Date date) const {
        bindNumber(kDate, duration_cast<nanoseconds>(date.time_since_epoch()).count());
    }
    void operator()(bool flag) const { bindNumber(kBool, flag ? 1 : 0); }
    void operator()(qint64 number) const { bindNumber(kInteger, number); }

    void bindNumber(const char *kind, qint64 number) const {
        use.bindText(kindParameter, kind);
        use.bindInteger(kindParameter + 1, number);
    }
};

SqliteCode okWhenDone(SqliteCode code) {
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

using Content = PreferenceTable::Content;

Result<Content, SqliteCode> anotherThingIfDamage(SqliteCode code) {
    if (isDamage(code))
        return Content::AnotherThing;
    return failed(code);
}

} // namespace

SqliteCode PreferenceTable::create(const SqliteConnection &connection) {
    return connection.run(kCreate);
}

Result<Content, SqliteCode> PreferenceTable::contentOf(const SqliteConnection &connection) {
    const auto applicationId = connection.answer("PRAGMA application_id");
    if (!applicationId)
        return anotherThingIfDamage(applicationId.error());
    const bool saysOurs = *applicationId == kApplicationId;
    const auto tables = connection.answer(
        saysOurs ? "SELECT count(*) FROM sqlite_schema WHERE type = 'table' AND name = 'preference'"
                 : "SELECT count(*) FROM sqlite_schema");
    if (!tables)
        return anotherThingIfDamage(tables.error());
    if (saysOurs)
        return *tables == "1" ? Content::Preferences : Content::AnotherThing;
    return *tables == "0" ? Content::Nothing : Content::AnotherThing;
}

Result<PreferenceTable, SqliteCode> PreferenceTable::open(SqliteConnection connection) {
    auto select = connection.prepare(kSelect);
    if (!select)
        return failed(select.error());
    return PreferenceTable(std::move(connection), std::move(*select));
}

Result<std::optional<PreferenceValue>, SqliteCode> PreferenceTable::value(const QString &key) const {
    SqliteStatement::Use select(m_select);
    select.bindText(1, utf8(key));
    const SqliteCode code = select.step();
    if (code == SQLITE_ROW)
        return valueIn(select, 0);
    if (code == SQLITE_DONE)
        return std::nullopt;
    return failed(code);
}

Result<std::map<QString, PreferenceValue>, SqliteCode> PreferenceTable::all() const {
    const auto statement = m_connection.prepare("SELECT key, kind, value FROM preference");
    if (!statement)
        return failed(statement.error());
    SqliteStatement::Use rows(*statement);
    std::map<QString, PreferenceValue> values;
    SqliteCode code = rows.step();
    for (; code == SQLITE_ROW; code = rows.step()) {
        if (auto value = valueIn(rows, 1))
            values.emplace(fromUtf8(rows.bytes(0)), std::move(*value));
    }
    if (code != SQLITE_DONE)
        return failed(code);
    return values;
}

SqliteCode PreferenceTable::change(const QString &key, const Preferences::Change &change) const {
    const SqliteTransaction transaction(m_connection);
    if (const SqliteCode code = transaction.begin(); code != SQLITE_OK)
        return code;
    if (m_connection.fileHasMoved())
        return SQLITE_READONLY_DBMOVED;
    const auto stored = value(key);
    if (!stored)
        return stored.error();
    const auto wanted = change(*stored);
    SqliteCode code = SQLITE_OK;
    if (!wanted)
        code = erase(key);
    else if (wanted != *stored)
        code = put(key, *wanted);
    return code == SQLITE_OK ? transaction.commit() : code;
}

SqliteCode PreferenceTable::put(const QString &key, const PreferenceValue &value) const {
    const auto statement =
        m_connection.prepare("INSERT OR REPLACE INTO preference (key, kind, value) VALUES (?1, ?2, ?3)");
    if (!statement)
        return statement.error();
    SqliteStatement::Use insert(*statement);
    insert.bindText(1, utf8(key));
    std::visit(BindValue{insert, 2}, value);
    return okWhenDone(insert.step());
}

SqliteCode PreferenceTable::erase(const QString &key) const {
    const auto statement = m_connection.prepare("DELETE FROM preference WHERE key = ?1");
    if (!statement)
        return statement.error();
    SqliteStatement::Use remove(*statement);
    remove.bindText(1, utf8(key));
    return okWhenDone(remove.step());
}

} // namespace velmo
