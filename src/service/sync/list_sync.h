#pragma once

#include "base/interface.h"
#include "service/sync/synced_list.h"

#include <deque>
#include <functional>
#include <vector>

namespace velmo {

class Preferences;
class SyncExchange;
struct SyncBody;

/// Keeps one list in step with the account, one operation after another: two pushes on their way at once could arrive
/// in the other order, and the service would take the older list for the newer. A push goes before synchronisations
/// that still wait, so that what it leaves out is gone from the account before they pull. An operation that waits
/// already serves for another of its kind. Main thread.
class ListSync : private Unmovable {
public:
    enum class End {
        NoToken,    ///< Nobody is signed in, or somebody else than when it began.
        PullFailed, ///< The stored list, if any, is still pushed.
        NotStored,  ///< The preferences cannot be read or written now; nothing was sent.
        PushFailed,
        Pushed,
    };
    using Completion = std::function<void(End)>;

    /// Both outlive the sync.
    ListSync(std::unique_ptr<SyncedList> list, Preferences &preferences, SyncExchange &exchange);
    /// Waits for the worker.
    ~ListSync();

    /// Pulls, merges, stores and pushes.
    void sync(Completion completion);
    /// Pushes the list as it is stored when its turn comes.
    void push(Completion completion);

    [[nodiscard]] bool isIdle() const { return m_operations.empty(); }

    /// Called when the last operation is done.
    std::function<void()> onIdle;

private:
    enum class Kind { Sync, Push };
    struct Operation {
        Kind kind;
        std::vector<Completion> completions;
    };
    /// What the steps of a synchronisation hand on.
    struct Pull {
        QString token;
        QString storedBefore;
    };

    void enqueue(Kind kind, Completion completion);
    void beginNext();
    void complete(End end);
    void next();
    void finish(End end);

    void pullList(const QString &storedBefore);
    void pulled(const Pull &pull, const SyncBody &reply);
    void pullFailed(const QString &token, const QString &failure);
    void mergeList(const Pull &pull, const QJsonObject &reply);
    void pushMerged(const QString &token, const QString &stored);
    void pushList();
    [[nodiscard]] std::optional<QString> storedList() const;
    void logCount(const QString &line, qsizetype count);

    std::unique_ptr<SyncedList> m_list;
    Preferences &m_preferences;
    SyncExchange &m_exchange;
    std::deque<Operation> m_operations; // the first one runs
};

} // namespace velmo
