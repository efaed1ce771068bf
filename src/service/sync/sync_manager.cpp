#include "service/sync/sync_manager.h"

#include "store/history_store.h"
#include "store/preferences.h"

namespace velmo {

namespace {

using End = ListSync::End;

bool wasPushed(End end) {
    return end == End::Pushed || end == End::PushFailed;
}

/// Waits for the three parts of a full synchronisation.
class Parts {
public:
    explicit Parts(SyncManager::Completion completion) : m_completion(std::move(completion)) {}

    void end(bool succeeded) {
        m_succeeded = m_succeeded && succeeded;
        if (--m_running == 0 && m_completion)
            m_completion(m_succeeded);
    }

private:
    SyncManager::Completion m_completion;
    int m_running = 3;
    bool m_succeeded = true;
};

} // namespace

SyncManager::SyncManager(ServiceOrigin origin, const Collaborators &collaborators)
    : m_queue(collaborators.queue),
      m_account(collaborators.account),
      m_exchange(std::move(origin),
                 {collaborators.queue, collaborators.worker, collaborators.tokens, collaborators.http}),
      m_dictionary(makeSyncedDictionary(), collaborators.preferences, m_exchange),
      m_snippets(makeSyncedSnippets(), collaborators.preferences, m_exchange),
      m_statistics(collaborators.history, m_exchange,
                   [this](const UsageTotals &totals) { showTotals(totals); }) {
    m_dictionary.onIdle = [this] { announceIdle(); };
    m_snippets.onIdle = [this] { announceIdle(); };
}

void SyncManager::syncAll(Completion completion) {
    if (!m_account.isLoggedIn()) {
        if (completion)
            m_exchange.onMain([completion] { completion(false); });
        return;
    }
    m_exchange.onMain([this] { setSyncing(true); });
    const auto parts = std::make_shared<Parts>(std::move(completion));
    syncList(m_dictionary, {}, [parts](End end) { parts->end(end == End::Pushed); });
    syncList(m_snippets, {}, [parts](End end) { parts->end(end == End::Pushed); });
    m_statistics.sync(counted([parts](bool succeeded) { parts->end(succeeded); }));
}

void SyncManager::syncDictionary(Completion completion) {
    syncList(m_dictionary, std::move(completion));
}

void SyncManager::syncSnippets(Completion completion) {
    syncList(m_snippets, std::move(completion));
}

void SyncManager::syncList(ListSync &list, Completion completion, ListSync::Completion ended) {
    list.sync([this, completion = std::move(completion), ended = std::move(ended)](End end) {
        if (wasPushed(end))
            noteSync();
        setSyncing(false);
        if (completion)
            completion(wasPushed(end));
        if (ended)
            ended(end);
    });
}

void SyncManager::syncStats() {
    m_statistics.sync(counted({}));
}

void SyncManager::pushDictionary() {
    m_dictionary.push([this](End end) {
        if (end == End::Pushed)
            noteSync();
        if (wasPushed(end))
            setSyncing(false);
    });
}

void SyncManager::pushSnippets() {
    m_snippets.push([](End) {});
}

void SyncManager::incrementStats(qsizetype words) {
    m_statistics.increment(words, counted({}));
}

void SyncManager::whenIdle(std::function<void()> callback) {
    m_waitingForIdle.push_back(std::move(callback));
    m_exchange.onMain([this] { announceIdle(); });
}

/// A completion that keeps count of what is under way.
StatisticsSync::Completion SyncManager::counted(StatisticsSync::Completion completion) {
    ++m_statisticsUnderWay;
    return [this, completion = std::move(completion)](bool succeeded) {
        --m_statisticsUnderWay;
        if (completion)
            completion(succeeded);
        announceIdle();
    };
}

void SyncManager::announceIdle() {
    if (m_statisticsUnderWay > 0 || !m_dictionary.isIdle() || !m_snippets.isIdle())
        return;
    for (const auto &callback : std::exchange(m_waitingForIdle, {}))
        callback();
}

void SyncManager::setSyncing(bool syncing) {
    if (std::exchange(m_isSyncing, syncing) != syncing)
        Q_EMIT isSyncingChanged();
}

void SyncManager::noteSync() {
    m_lastSyncDate = m_queue.now();
    Q_EMIT lastSyncDateChanged();
}

void SyncManager::showTotals(const UsageTotals &totals) {
    if (m_serverTotalWords == totals.words && m_serverTotalSessions == totals.sessions)
        return;
    m_serverTotalWords = totals.words;
    m_serverTotalSessions = totals.sessions;
    Q_EMIT serverTotalsChanged();
}

} // namespace velmo
