#include "service/sync/statistics_sync.h"

#include "base/json.h"
#include "base/log.h"
#include "service/sync/sync_exchange.h"
#include "store/history_store.h"
#include "store/word_count.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr QLatin1StringView kTotalWords{"totalWords"};
constexpr QLatin1StringView kTotalSessions{"totalSessions"};
constexpr QLatin1StringView kWords{"words"};

UsageTotals totalsIn(const SyncBody &reply, const UsageTotals &whenAbsent) {
    return {json::integer(reply.text, kTotalWords).value_or(whenAbsent.words),
            json::integer(reply.text, kTotalSessions).value_or(whenAbsent.sessions)};
}

QString described(const UsageTotals &totals) {
    return u"%1w/%2s"_s.arg(totals.words).arg(totals.sessions);
}

QString spelledOut(const UsageTotals &totals) {
    return u"%1 words, %2 sessions"_s.arg(totals.words).arg(totals.sessions);
}

} // namespace

StatisticsSync::StatisticsSync(const HistoryStore &history, SyncExchange &exchange, Totals show)
    : m_history(history), m_exchange(exchange), m_show(std::move(show)) {}

StatisticsSync::~StatisticsSync() {
    m_exchange.waitForWorker();
}

void StatisticsSync::sync(const Completion &completion) {
    withToken(
        [this, completion](const QString &token) {
            m_exchange.send(RequestKind::StatisticsPull, token, std::nullopt,
                            [this, token, completion](const SyncReply &reply) {
                                if (reply) {
                                    whileSessionLasts(
                                        token,
                                        [this, token, server = totalsIn(*reply, {}), completion] {
                                            pulled(token, server, completion);
                                        },
                                        completion);
                                    return;
                                }
                                log(LogTag::Sync, u"Pull stats failed: "_s + reply.error().description());
                                completion(false);
                            });
        },
        completion);
}

void StatisticsSync::pulled(const QString &token, const UsageTotals &server, const Completion &completion) {
    const UsageTotals local = localTotals();
    const UsageTotals shown = largerTotals(server, local);
    m_show(shown);
    log(LogTag::Sync, u"Pulled stats: server=%1, local=%2 → showing %3"_s.arg(
                          described(server), described(local), described(shown)));
    if (isAhead(local, server))
        pushLocal(token, local, shown, completion);
    else
        completion(true);
}

void StatisticsSync::pushLocal(const QString &token, const UsageTotals &local, const UsageTotals &shown,
                               const Completion &completion) {
    log(LogTag::Sync, u"Local > server, pushing stats: "_s + spelledOut(local));
    const QJsonObject body{{kTotalWords, local.words}, {kTotalSessions, local.sessions}};
    m_exchange.send(RequestKind::StatisticsPush, token, json::compact(body),
                    [this, shown, completion](const SyncReply &reply) {
                        if (reply) {
                            const UsageTotals merged = totalsIn(*reply, shown);
                            m_show(merged);
                            log(LogTag::Sync, u"Stats pushed, merged: "_s + spelledOut(merged));
                        } else {
                            log(LogTag::Sync, u"Stats push failed: "_s + reply.error().description());
                        }
                        completion(reply.has_value());
                    });
}

void StatisticsSync::increment(qint64 words, const Completion &completion) {
    withToken(
        [this, words, completion](const QString &token) {
            m_exchange.send(
                RequestKind::StatisticsIncrement, token, json::compact(QJsonObject{{kWords, words}}),
                [words, completion](const SyncReply &reply) {
                    if (reply)
                        log(LogTag::Sync, u"Incremented stats: +%1 words"_s.arg(words));
                    else
                        log(LogTag::Sync, u"Increment stats failed: "_s + reply.error().description());
                    completion(reply.has_value());
                });
        },
        completion);
}

UsageTotals StatisticsSync::localTotals() const {
    UsageTotals totals{0, m_history.entries().size()};
    for (const Entry &entry : m_history.entries())
        totals.words += countWords(entry.text);
    return totals;
}

/// Goes on only where the token is still the session's: after a sign-out, totals of that account are neither shown nor
/// pushed.
void StatisticsSync::whileSessionLasts(const QString &token, std::function<void()> goOn,
                                       Completion completion) {
    m_exchange.onWorker([this, token, goOn = std::move(goOn), completion = std::move(completion)]() mutable {
        if (m_exchange.token() == token)
            m_exchange.onMain(std::move(goOn));
        else
            m_exchange.onMain([completion = std::move(completion)] { completion(false); });
    });
}

/// Runs the task on the worker with the session's token; without one the operation is over.
void StatisticsSync::withToken(std::function<void(const QString &token)> task, Completion completion) {
    m_exchange.onWorker([this, task = std::move(task), completion = std::move(completion)] {
        if (const auto token = m_exchange.token())
            task(*token);
        else
            m_exchange.onMain([completion] { completion(false); });
    });
}

} // namespace velmo
