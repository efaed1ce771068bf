#include "store/wal_checkpointer.h"

#include "base/log.h"
#include "store/sqlite_connection.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using namespace std::chrono_literals;

/// Changes come in bursts (a synchronisation, a dictation's texts and dates), which share one trip to the disk.
constexpr auto kBurst = 1s;

/// Emptying the log needs a moment without readers; theirs are far shorter. Writers wait meanwhile.
constexpr auto kReaderPatience = 100ms;

/// The first checkpoint does the slow part and lets writers go on; the second, which locks them out, then finds
/// nothing left to copy and only empties the log. Where writers were quicker the log stays for the next try.
SqliteCode copyAndEmptyLog(const SqliteConnection &connection) {
    int frames = 0;
    int copied = 0;
    const SqliteCode code =
        sqlite3_wal_checkpoint_v2(connection.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, &frames, &copied);
    if (code != SQLITE_OK)
        return code;
    if (copied < frames)
        return SQLITE_BUSY;
    return sqlite3_wal_checkpoint_v2(connection.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
}

SqliteCode checkpointOf(const PreferencesFile &file) {
    const auto hold = file.holdInPlace();
    if (!hold)
        return hold.error();
    if (!file.exists())
        return SQLITE_OK; // removed by somebody, and its log with it
    const auto connection =
        SqliteConnection::open(file.path(), SqliteConnection::Access::ReadWrite, kReaderPatience);
    if (!connection)
        return connection.error();
    // FULL is the library's default, said here because everything rests on it. The read opens the log.
    const SqliteCode code = connection->run("PRAGMA synchronous = FULL; SELECT count(*) FROM sqlite_schema");
    return code == SQLITE_OK ? copyAndEmptyLog(*connection) : code;
}

} // namespace

WalCheckpointer::WalCheckpointer(PreferencesFile file) : m_file(std::move(file)) {}

WalCheckpointer::~WalCheckpointer() {
    finish();
}

void WalCheckpointer::noteChange() {
    const std::lock_guard lock(m_mutex);
    m_changed = true;
    if (!m_thread.joinable())
        m_thread = std::jthread([this](const std::stop_token &stop) { run(stop); });
    m_wake.notify_one();
}

void WalCheckpointer::finish() {
    if (!m_thread.joinable())
        return;
    m_thread.request_stop();
    m_thread.join();
}

void WalCheckpointer::run(const std::stop_token &stop) {
    std::unique_lock lock(m_mutex);
    while (m_wake.wait(lock, stop, [this] { return m_changed; })) {
        m_wake.wait_for(lock, stop, kBurst, [] { return false; });
        m_changed = false;
        lock.unlock();
        const bool done = checkpoint();
        lock.lock();
        if (!done && !stop.stop_requested())
            m_changed = true;
    }
}

bool WalCheckpointer::checkpoint() {
    const SqliteCode code = checkpointOf(m_file);
    if (code != m_lastCode && code != SQLITE_OK && (code & 0xff) != SQLITE_BUSY)
        log(LogTag::Prefs, u"Changes are not on the disk yet: "_s + describe(code));
    m_lastCode = code;
    return code == SQLITE_OK;
}

} // namespace velmo
