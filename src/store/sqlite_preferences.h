#pragma once

#include "store/preferences.h"
#include "store/preferences_file.h"
#include "store/wal_checkpointer.h"

#include <memory>
#include <mutex>
#include <type_traits>

namespace velmo {

class PreferenceTable;

/// A preference domain in an SQLite file with a write-ahead log, for any number of processes and threads. A change
/// of another process is seen at the next read; a reader never waits for a writer, and nobody for the disk. The file
/// is made at the first change, readable by its owner alone.
///
/// - A process that is killed loses nothing it was told is stored.
/// - A file that cannot be written (disk full, read-only) or stays busy goes on being read; the change is logged and
///   refused.
/// - A file that is damaged or another program's is set aside with a log line, and a new one begun.
/// - Strings are stored as UTF-8: NULs survive, half a surrogate pair becomes U+FFFD. A value may be as large as
///   SQLite allows (a thousand million bytes).
///
/// Log lines name keys, never values.
class SqlitePreferences final : public Preferences {
public:
    explicit SqlitePreferences(const QString &path, std::chrono::milliseconds patience = kPatience);
    ~SqlitePreferences() override;

    /// As `Preferences::read`. Fails too where the file can be read without its log alone, which may hold newer values.
    [[nodiscard]] Result<std::optional<PreferenceValue>, PreferencesFailure>
    read(const QString &key) const override;
    [[nodiscard]] std::optional<PreferenceValue> value(const QString &key) const override;
    [[nodiscard]] std::map<QString, PreferenceValue> all() const override;

    /// As `Preferences::change`. The change must not call this object's `change`, and is asked again should the file
    /// turn out damaged in the middle.
    bool change(const QString &key, const Change &change) override;

    void ensureFile() override;

private:
    using Table = std::unique_ptr<PreferenceTable>;

    /// What serves where the file cannot be read together with its log.
    enum class Fallback { None, FileAlone };

    template <class Query>
    [[nodiscard]] std::invoke_result_t<Query, const PreferenceTable &> readTable(const Query &query,
                                                                                 Fallback fallback) const;
    template <class Attempt>
    [[nodiscard]] SqliteCode repairing(const Attempt &attempt) const;
    [[nodiscard]] SqliteCode openReader(Fallback fallback) const;
    [[nodiscard]] SqliteCode openWriter();
    void reportReading(SqliteCode code) const;

    PreferencesFile m_file;
    std::chrono::milliseconds m_patience;

    mutable std::mutex m_readMutex; // of the two below
    mutable Table m_reader;
    mutable SqliteCode m_lastReadCode = 0; // a failure that goes on is logged once

    std::mutex m_writeMutex; // of m_writer
    Table m_writer;

    WalCheckpointer m_checkpointer;
};

} // namespace velmo
