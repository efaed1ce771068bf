#pragma once

#include "base/result.h"
#include "localservice/account/sql_run.h"
#include "localservice/http/endpoint.h"
#include "store/sqlite_transaction.h"

#include <mutex>
#include <optional>

namespace velmo::localservice {

/// The accounts of this service and what they keep in step: one SQLite file, "accounts.sqlite", in the data directory.
/// Directory and file are made when they are first needed, for their owner alone. A file that is damaged, full or
/// another program's is left as it is: every use answers a refusal until somebody has put it right, and the rest of
/// the service goes on. Any thread, and several processes.
class AccountDatabase {
public:
    /// The directory is an absolute path.
    explicit AccountDatabase(const QString &directory);

    /// Runs the work, which takes an SqlRun and answers a Result with a Refusal, in one transaction. It is committed,
    /// and on the disk, when the result has come about; else nothing of it has happened.
    template <class Work>
    [[nodiscard]] auto transaction(const Work &work) -> decltype(work(std::declval<SqlRun &>())) {
        const std::lock_guard lock(m_mutex);
        if (const SqliteCode code = open(); code != SQLITE_OK)
            return failed(refusalFor(code));
        SqlRun sql(*m_connection);
        auto outcome = runIn(sql, work);
        if (sql.failure() != SQLITE_OK)
            return failed(refusalFor(sql.failure()));
        return outcome;
    }

private:
    template <class Work>
    auto runIn(SqlRun &sql, const Work &work) {
        const SqliteTransaction transaction(*m_connection);
        sql.note(transaction.begin());
        auto outcome = work(sql);
        if (outcome && sql.failure() == SQLITE_OK)
            sql.note(transaction.commit());
        return outcome;
    }

    /// Makes sure of a connection to the file that is there now.
    [[nodiscard]] SqliteCode open();
    [[nodiscard]] SqliteCode makeFile() const;
    /// What to answer to a failure, which is logged; the next use opens the file anew.
    [[nodiscard]] Refusal refusalFor(SqliteCode code);

    const QString m_directory;
    const QByteArray m_file;
    std::mutex m_mutex; // of the rest
    std::optional<SqliteConnection> m_connection;
};

} // namespace velmo::localservice
