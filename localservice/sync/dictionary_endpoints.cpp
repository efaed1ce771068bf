#include "localservice/sync/endpoints.h"

#include "localservice/account/session_endpoint.h"
#include "localservice/http/json_request.h"
#include "localservice/sync/known_keys.h"
#include "localservice/sync/sync_limits.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr QLatin1StringView kList("words");

QJsonArray words(SqlRun &sql, const Session &session, bool tombstones) {
    QJsonArray found;
    sql.rows([&found](const SqliteStatement::Use &row) { found.append(textIn(row, 0)); },
             "SELECT word FROM word WHERE account = ?1 AND is_tombstone = ?2 ORDER BY word", session.account,
             qint64{tombstones});
    return found;
}

Result<QJsonObject, Refusal> pull(SqlRun &sql, const Session &session, const Request &) {
    knowPulled(sql, session, kList,
               u"SELECT word AS key FROM word WHERE account = ?1 AND is_tombstone = 0"_s);
    return QJsonObject{{u"words"_s, words(sql, session, false)},
                       {u"deletedWords"_s, words(sql, session, true)}};
}

Result<QString, Refusal> wordAt(const QJsonArray &array, qsizetype index) {
    const QString name = u"words[%1]"_s.arg(index);
    return textWithin(array.at(index), name, kLongestWord);
}

Result<QStringList, Refusal> pushedWords(const Request &request) {
    const auto array = arrayMember(request, kList);
    if (!array)
        return failed(array.error());
    QStringList words;
    for (qsizetype index = 0; index < array->size(); ++index) {
        const auto word = wordAt(*array, index);
        if (!word)
            return failed(word.error());
        words.append(*word);
    }
    return words;
}

void merge(SqlRun &sql, const Session &session, const QStringList &words) {
    takePushed(sql, words);
    sql.run("UPDATE word SET is_tombstone = 1 WHERE account = ?1 AND word NOT IN (SELECT key FROM pushed)"
            " AND word IN (SELECT key FROM known WHERE session = ?2 AND list = 'words')",
            session.account, session.id);
    sql.run("INSERT INTO word (account, word, is_tombstone) SELECT ?1, key, 0 FROM pushed"
            " WHERE key NOT IN (SELECT key FROM known WHERE session = ?2 AND list = 'words')"
            " ON CONFLICT DO UPDATE SET is_tombstone = 0",
            session.account, session.id);
    knowPushed(sql, session, kList);
}

Result<QJsonObject, Refusal> push(SqlRun &sql, const Session &session, const Request &request) {
    const auto words = pushedWords(request);
    if (!words)
        return failed(words.error());
    merge(sql, session, *words);
    if (sql.number("SELECT count(*) FROM word WHERE account = ?1 AND is_tombstone = 0", session.account) >
        kMostWords)
        return failed(tooMany(u"words"_s, kMostWords));
    return QJsonObject();
}

} // namespace

Endpoint dictionaryPullEndpoint(AccountDatabase &database) {
    return sessionEndpoint("GET", "/api/sync/dictionary", database, pull);
}

Endpoint dictionaryPushEndpoint(AccountDatabase &database) {
    return sessionEndpoint("PUT", "/api/sync/dictionary", database, push);
}

} // namespace velmo::localservice
