#pragma once

#include "service/sync/list_pushes.h"
#include "service/sync/list_sync.h"
#include "service/sync/statistics_sync.h"
#include "service/sync/sync_exchange.h"
#include "service/wire/session_interfaces.h"

#include <QObject>

namespace velmo {

/// Keeps dictionary, snippets and statistics in step with the account of who is signed in. Every operation returns at
/// once and ends in a log line; nothing is repeated, and no failure takes anything away from what is stored here.
/// Published fields change on the main thread. Main thread.
class SyncManager final : public QObject,
                          public Synchronisation,
                          public ListPushes,
                          public StatisticsReporter {
    Q_OBJECT
    Q_PROPERTY(bool isSyncing READ isSyncing NOTIFY isSyncingChanged)

public:
    /// Called once on the main thread.
    using Completion = std::function<void(bool)>;

    /// Whom the manager works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        QThreadPool &worker; ///< Of one thread: it waits for keychain and preferences.
        Preferences &preferences;
        const HistoryStore &history;
        Account &account;
        TokenSource &tokens;
        HttpClient &http;
    };

    SyncManager(ServiceOrigin origin, const Collaborators &collaborators);

    [[nodiscard]] const QString &baseURL() const { return m_exchange.baseURL(); }

    /// Synchronises all three, each for itself; nothing while nobody is signed in.
    Q_INVOKABLE void syncAll() override { syncAll({}); }
    /// @param completion takes whether every exchange of all three succeeded.
    void syncAll(Completion completion);

    /// @param completion takes false when nobody is signed in or the pull failed, true when the merged list was
    ///        stored and pushed, whatever became of the push.
    void syncDictionary(Completion completion = {});
    void syncSnippets(Completion completion = {});
    void syncStats();

    void pushDictionary() override;
    void pushSnippets() override;
    void incrementStats(qsizetype words) override;

    /// Calls back on the main thread once nothing is under way.
    void whenIdle(std::function<void()> callback);

    /// From the start of a full synchronisation until one of its lists has come to an end; others may still run.
    [[nodiscard]] bool isSyncing() const { return m_isSyncing; }
    /// When a list was pushed last; none before that.
    [[nodiscard]] std::optional<Date> lastSyncDate() const override { return m_lastSyncDate; }
    /// The totals to show for the account; none before the first were pulled.
    [[nodiscard]] std::optional<qint64> serverTotalWords() const { return m_serverTotalWords; }
    [[nodiscard]] std::optional<qint64> serverTotalSessions() const { return m_serverTotalSessions; }

Q_SIGNALS:
    void isSyncingChanged();
    void lastSyncDateChanged();
    void serverTotalsChanged();

private:
    void syncList(ListSync &list, Completion completion, ListSync::Completion ended = {});
    [[nodiscard]] StatisticsSync::Completion counted(StatisticsSync::Completion completion);
    void announceIdle();

    void setSyncing(bool syncing);
    void noteSync();
    void showTotals(const UsageTotals &totals);

    MainQueue &m_queue;
    Account &m_account;
    SyncExchange m_exchange;
    ListSync m_dictionary;
    ListSync m_snippets;
    StatisticsSync m_statistics;
    int m_statisticsUnderWay = 0;
    std::vector<std::function<void()>> m_waitingForIdle;

    bool m_isSyncing = false;
    std::optional<Date> m_lastSyncDate;
    std::optional<qint64> m_serverTotalWords;
    std::optional<qint64> m_serverTotalSessions;
};

} // namespace velmo
