#include "localservice/sync/endpoints.h"

#include "localservice/account/session_endpoint.h"
#include "localservice/http/json_request.h"
#include "localservice/sync/sync_limits.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr QLatin1StringView kTotalWords("totalWords");
constexpr QLatin1StringView kTotalSessions("totalSessions");

QJsonObject totals(SqlRun &sql, const Session &session) {
    QJsonObject totals;
    sql.rows(
        [&totals](const SqliteStatement::Use &row) {
            totals = {{kTotalWords, row.integer(0)}, {kTotalSessions, row.integer(1)}};
        },
        "SELECT total_words, total_sessions FROM account WHERE id = ?1", session.account);
    return totals;
}

Result<QJsonObject, Refusal> pull(SqlRun &sql, const Session &session, const Request &) {
    return totals(sql, session);
}

Result<QJsonObject, Refusal> push(SqlRun &sql, const Session &session, const Request &request) {
    const auto words = countMember(request, kTotalWords, kMostTotal);
    if (!words)
        return failed(words.error());
    const auto sessions = countMember(request, kTotalSessions, kMostTotal);
    if (!sessions)
        return failed(sessions.error());
    sql.run("UPDATE account SET total_words = max(total_words, ?2), total_sessions = max(total_sessions, ?3)"
            " WHERE id = ?1",
            session.account, *words, *sessions);
    return totals(sql, session);
}

Result<QJsonObject, Refusal> increment(SqlRun &sql, const Session &session, const Request &request) {
    const auto words = countMember(request, "words"_L1, kMostWordsOfDictation);
    if (!words)
        return failed(words.error());
    sql.run("UPDATE account SET total_words = total_words + ?2, total_sessions = total_sessions + 1"
            " WHERE id = ?1",
            session.account, *words);
    return totals(sql, session);
}

} // namespace

Endpoint statisticsPullEndpoint(AccountDatabase &database) {
    return sessionEndpoint("GET", "/api/sync/stats", database, pull);
}

Endpoint statisticsPushEndpoint(AccountDatabase &database) {
    return sessionEndpoint("PUT", "/api/sync/stats", database, push);
}

Endpoint statisticsIncrementEndpoint(AccountDatabase &database) {
    return sessionEndpoint("POST", "/api/sync/stats/increment", database, increment);
}

} // namespace velmo::localservice
