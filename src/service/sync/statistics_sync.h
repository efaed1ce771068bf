#pragma once

#include "base/interface.h"
#include "service/sync/sync_merge.h"

#include <functional>
#include <optional>

namespace velmo {

class HistoryStore;
class SyncExchange;

/// Keeps the totals of use in step with the account. Main thread.
class StatisticsSync : private Unmovable {
public:
    using Completion = std::function<void(bool succeeded)>;
    using Totals = std::function<void(const UsageTotals &)>;

    /// Both outlive the sync. `show` takes the totals to be shown for the account.
    StatisticsSync(const HistoryStore &history, SyncExchange &exchange, Totals show);
    /// Waits for the worker.
    ~StatisticsSync();

    /// Pulls the totals and, where this machine is ahead in any of them, pushes its own.
    void sync(const Completion &completion);

    /// Adds the words of one dictation to the account's.
    void increment(qint64 words, const Completion &completion);

private:
    [[nodiscard]] UsageTotals localTotals() const;
    void pulled(const QString &token, const UsageTotals &server, const Completion &completion);
    void pushLocal(const QString &token, const UsageTotals &local, const UsageTotals &shown,
                   const Completion &completion);
    void whileSessionLasts(const QString &token, std::function<void()> goOn, Completion completion);
    void withToken(std::function<void(const QString &token)> task, Completion completion);

    const HistoryStore &m_history;
    SyncExchange &m_exchange;
    Totals m_show;
};

} // namespace velmo
