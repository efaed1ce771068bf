#include "service/sync/list_sync.h"

#include "base/log.h"
#include "service/sync/sync_exchange.h"
#include "store/preferences.h"

#include <algorithm>

namespace velmo {

namespace {

QString textOf(const std::optional<PreferenceValue> &stored) {
    const auto *text = stored ? std::get_if<QString>(&*stored) : nullptr;
    return text ? *text : QString();
}

} // namespace

ListSync::ListSync(std::unique_ptr<SyncedList> list, Preferences &preferences, SyncExchange &exchange)
    : m_list(std::move(list)), m_preferences(preferences), m_exchange(exchange) {}

ListSync::~ListSync() {
    m_exchange.waitForWorker();
}

void ListSync::sync(Completion completion) {
    enqueue(Kind::Sync, std::move(completion));
}

void ListSync::push(Completion completion) {
    enqueue(Kind::Push, std::move(completion));
}

void ListSync::enqueue(Kind kind, Completion completion) {
    if (m_operations.empty()) {
        m_operations.push_back({kind, {std::move(completion)}});
        beginNext();
        return;
    }
    const auto waiting = m_operations.begin() + 1;
    const auto same =
        std::find_if(waiting, m_operations.end(), [kind](const auto &other) { return other.kind == kind; });
    if (same != m_operations.end())
        same->completions.push_back(std::move(completion));
    else
        m_operations.insert(kind == Kind::Push ? waiting : m_operations.end(),
                            {kind, {std::move(completion)}});
}

void ListSync::beginNext() {
    if (m_operations.front().kind == Kind::Push)
        m_exchange.onWorker([this] { pushList(); });
    else
        // Read here, where pages change the list: no change falls between it and the pull.
        m_exchange.onWorker(
            [this, stored = m_preferences.string(m_list->key()).value_or(QString())] { pullList(stored); });
}

void ListSync::complete(End end) {
    for (const Completion &completion : std::exchange(m_operations.front().completions, {}))
        completion(end);
}

void ListSync::next() {
    m_operations.pop_front();
    if (!m_operations.empty())
        beginNext();
    else if (onIdle)
        onIdle();
}

void ListSync::finish(End end) {
    complete(end);
    next();
}

/// On the worker.
void ListSync::pullList(const QString &storedBefore) {
    const auto token = m_exchange.token();
    if (!token) {
        m_exchange.onMain([this] { finish(End::NoToken); });
        return;
    }
    m_exchange.send(m_list->pull(), *token, std::nullopt,
                    [this, pull = Pull{*token, storedBefore}](const SyncReply &reply) {
                        if (reply)
                            pulled(pull, *reply);
                        else
                            pullFailed(pull.token, reply.error().description());
                    });
}

void ListSync::pulled(const Pull &pull, const SyncBody &reply) {
    m_exchange.onWorker([this, pull, object = reply.object] { mergeList(pull, object); });
}

void ListSync::pullFailed(const QString &token, const QString &failure) {
    log(LogTag::Sync, m_list->lines().pullFailed + failure);
    complete(End::PullFailed);
    m_exchange.onWorker([this, token] {
        const QString stored = storedList().value_or(QString());
        const qsizetype count = m_list->count(stored);
        if (count == 0) {
            m_exchange.onMain([this] { next(); });
            return;
        }
        m_exchange.send(m_list->push(), token, m_list->body(stored), [this, count](const SyncReply &) {
            logCount(m_list->lines().localPushed, count);
            next();
        });
    });
}

/// On the worker. The list is read, merged and stored in one transaction, so that nothing added meanwhile is lost.
void ListSync::mergeList(const Pull &pull, const QJsonObject &reply) {
    if (m_exchange.token() != pull.token) {
        m_exchange.onMain([this] { finish(End::NoToken); });
        return;
    }
    SyncedList::Merge merge;
    const bool isStored =
        m_preferences.change(m_list->key(), [&](const std::optional<PreferenceValue> &stored) {
            merge = m_list->merge(pull.storedBefore, textOf(stored), reply);
            return PreferenceValue(merge.stored);
        });
    if (!isStored) {
        // Pushing it would tell the service that the words of others have arrived here.
        m_exchange.onMain([this] { finish(End::NotStored); });
        return;
    }
    log(LogTag::Sync, merge.logLine);
    pushMerged(pull.token, merge.stored);
}

void ListSync::pushMerged(const QString &token, const QString &stored) {
    m_exchange.send(m_list->push(), token, m_list->body(stored),
                    [this, count = m_list->count(stored)](const SyncReply &reply) {
                        if (reply)
                            logCount(m_list->lines().mergePushed, count);
                        else
                            log(LogTag::Sync, m_list->lines().mergePushFailed + reply.error().description());
                        finish(reply ? End::Pushed : End::PushFailed);
                    });
}

/// On the worker.
void ListSync::pushList() {
    const auto token = m_exchange.token();
    const auto stored = token ? storedList() : std::nullopt;
    if (!stored) {
        m_exchange.onMain([this, end = token ? End::NotStored : End::NoToken] { finish(end); });
        return;
    }
    m_exchange.send(m_list->push(), *token, m_list->body(*stored),
                    [this, count = m_list->count(*stored)](const SyncReply &reply) {
                        if (reply)
                            logCount(m_list->lines().pushed, count);
                        else
                            log(LogTag::Sync, m_list->lines().pushFailed + reply.error().description());
                        finish(reply ? End::Pushed : End::PushFailed);
                    });
}

/// The list for a push; nothing when the preferences cannot be read. Taken for an empty list, that would make the
/// service delete everything.
std::optional<QString> ListSync::storedList() const {
    const auto stored = m_preferences.read(m_list->key());
    return stored ? std::optional(textOf(*stored)) : std::nullopt;
}

void ListSync::logCount(const QString &line, qsizetype count) {
    log(LogTag::Sync, line.arg(count));
}

} // namespace velmo
