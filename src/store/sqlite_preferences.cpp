#include "store/sqlite_preferences.h"

#include "base/log.h"
#include "store/preference_table.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using Access = SqliteConnection::Access;
using Table = std::unique_ptr<PreferenceTable>;

/// Null where the file is absent or empty.
Result<Table, SqliteCode> openTable(const PreferencesFile &file, Access access,
                                    std::chrono::milliseconds patience) {
    const auto hold = file.holdInPlace();
    if (!hold)
        return failed(hold.error());
    if (!file.exists())
        return nullptr;
    auto connection = SqliteConnection::open(file.path(), access, patience);
    if (!connection)
        return failed(connection.error());
    connection->keepLogOnClose(true);
    const auto content = PreferenceTable::contentOf(*connection);
    if (!content)
        return failed(content.error());
    if (*content == PreferenceTable::Content::Nothing)
        return nullptr;
    if (*content == PreferenceTable::Content::AnotherThing)
        return failed(SqliteCode(SQLITE_NOTADB));
    auto table = PreferenceTable::open(std::move(*connection));
    if (!table)
        return failed(table.error());
    return std::make_unique<PreferenceTable>(std::move(*table));
}

/// Whether a file that is there cannot be read only because SQLite has no way to make the index it keeps beside one
/// with a write-ahead log: a read-only directory, a full disk.
bool lacksIndex(SqliteCode code) {
    switch (code & 0xff) {
    case SQLITE_CANTOPEN:
    case SQLITE_READONLY:
    case SQLITE_FULL:
        return true;
    default:
        return code == SQLITE_IOERR_SHMOPEN || code == SQLITE_IOERR_SHMSIZE || code == SQLITE_IOERR_SHMMAP;
    }
}

/// A commit hands its pages to the system and is done; the checkpointer alone deals with the disk.
SqliteCode leaveDiskToCheckpointer(const SqliteConnection &connection) {
    return connection.run("PRAGMA synchronous = OFF; PRAGMA wal_autocheckpoint = 0");
}

} // namespace

SqlitePreferences::SqlitePreferences(const QString &path, std::chrono::milliseconds patience)
    : m_file(path), m_patience(patience), m_checkpointer(m_file) {}

SqlitePreferences::~SqlitePreferences() {
    m_writer.reset();
    m_checkpointer.finish();
    const auto hold = m_file.holdInPlace();
    if (m_reader && hold)
        m_reader->connection().keepLogOnClose(false); // who leaves last puts all into the one file
    m_reader.reset();
}

Result<std::optional<PreferenceValue>, PreferencesFailure> SqlitePreferences::read(const QString &key) const {
    return readTable([&](const PreferenceTable &table) { return table.value(key); }, Fallback::None)
        .map_error([](SqliteCode code) { return PreferencesFailure{describe(code)}; });
}

std::optional<PreferenceValue> SqlitePreferences::value(const QString &key) const {
    return readTable([&](const PreferenceTable &table) { return table.value(key); }, Fallback::FileAlone)
        .value_or(std::nullopt);
}

std::map<QString, PreferenceValue> SqlitePreferences::all() const {
    return readTable([](const PreferenceTable &table) { return table.all(); }, Fallback::FileAlone)
        .value_or(std::map<QString, PreferenceValue>());
}

bool SqlitePreferences::change(const QString &key, const Change &change) {
    const std::lock_guard lock(m_writeMutex);
    const SqliteCode code = repairing([&] {
        SqliteCode code = openWriter();
        if (code == SQLITE_OK)
            code = m_writer->change(key, change);
        if (code != SQLITE_OK)
            m_writer.reset();
        return code;
    });
    if (code == SQLITE_OK)
        m_checkpointer.noteChange();
    else
        log(LogTag::Prefs, u"Could not store %1: %2"_s.arg(key, describe(code)));
    return code == SQLITE_OK;
}

void SqlitePreferences::ensureFile() {
    const std::lock_guard lock(m_writeMutex);
    if (const SqliteCode code = repairing([&] { return openWriter(); }); code != SQLITE_OK)
        log(LogTag::Prefs, u"Could not make the preferences' file: "_s + describe(code));
}

/// Answers what the query does; nothing where there is no file.
template <class Query>
std::invoke_result_t<Query, const PreferenceTable &> SqlitePreferences::readTable(const Query &query,
                                                                                  Fallback fallback) const {
    const std::lock_guard lock(m_readMutex);
    std::invoke_result_t<Query, const PreferenceTable &> answer;
    const SqliteCode code = repairing([&] {
        SqliteCode code = openReader(fallback);
        if (code != SQLITE_OK || !m_reader)
            return code;
        answer = query(*m_reader);
        code = answer ? SQLITE_OK : answer.error();
        // An immutable connection would never see a change, so it serves once.
        if (code != SQLITE_OK || m_reader->connection().access() == Access::Immutable)
            m_reader.reset();
        return code;
    });
    reportReading(code);
    if (code != SQLITE_OK)
        answer = failed(code);
    return answer;
}

/// Tries once more after another file took the place of ours, or after a damaged one was set aside.
template <class Attempt>
SqliteCode SqlitePreferences::repairing(const Attempt &attempt) const {
    const SqliteCode code = attempt();
    if (code == SQLITE_READONLY_DBMOVED || (isDamage(code) && m_file.ensure() == SQLITE_OK))
        return attempt();
    return code;
}

SqliteCode SqlitePreferences::openReader(Fallback fallback) const {
    if (m_reader && !m_reader->connection().fileHasMoved())
        return SQLITE_OK;
    m_reader.reset();
    auto table = openTable(m_file, Access::ReadWrite, m_patience);
    if (!table && fallback == Fallback::FileAlone && lacksIndex(table.error()))
        table = openTable(m_file, Access::Immutable, m_patience);
    if (!table)
        return table.error();
    m_reader = std::move(*table);
    return SQLITE_OK;
}

SqliteCode SqlitePreferences::openWriter() {
    if (m_writer && !m_writer->connection().fileHasMoved())
        return SQLITE_OK;
    m_writer.reset();
    m_file.keepPrivate();
    auto table = openTable(m_file, Access::ReadWrite, m_patience);
    if (table && !*table) {
        if (const SqliteCode code = m_file.ensure(); code != SQLITE_OK)
            return code;
        table = openTable(m_file, Access::ReadWrite, m_patience);
    }
    if (!table)
        return table.error();
    if (!*table)
        return SQLITE_CANTOPEN;
    m_writer = std::move(*table);
    return leaveDiskToCheckpointer(m_writer->connection());
}

void SqlitePreferences::reportReading(SqliteCode code) const {
    if (code != m_lastReadCode && code != SQLITE_OK)
        log(LogTag::Prefs, u"Could not read the preferences: "_s + describe(code));
    m_lastReadCode = code;
}

} // namespace velmo
