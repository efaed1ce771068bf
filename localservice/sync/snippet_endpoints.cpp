#include "localservice/sync/endpoints.h"

#include "localservice/account/session_endpoint.h"
#include "localservice/http/json_request.h"
#include "localservice/sync/known_keys.h"
#include "localservice/sync/sync_limits.h"
#include "store/snippet_form.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr QLatin1StringView kList("snippets");

struct Member {
    QLatin1StringView name;
    QString SnippetEntry::*field;
    qsizetype longest;
};

constexpr Member kMembers[] = {
    {snippet_members::id, &SnippetEntry::id, kLongestTrigger},
    {snippet_members::trigger, &SnippetEntry::trigger, kLongestTrigger},
    {snippet_members::expansion, &SnippetEntry::expansion, kLongestExpansion},
};

Result<QJsonObject, Refusal> pull(SqlRun &sql, const Session &session, const Request &) {
    knowPulled(sql, session, kList, u"SELECT key FROM snippet WHERE account = ?1"_s);
    QJsonArray snippets;
    sql.rows(
        [&snippets](const SqliteStatement::Use &row) {
            QJsonObject snippet;
            int column = 0;
            for (const Member &member : kMembers)
                snippet.insert(member.name, textIn(row, column++));
            snippets.append(snippet);
        },
        "SELECT id, trigger, expansion FROM snippet WHERE account = ?1 ORDER BY trigger", session.account);
    return QJsonObject{{kList, snippets}};
}

Result<SnippetEntry, Refusal> snippetAt(const QJsonArray &array, qsizetype index) {
    const QJsonObject object = array.at(index).toObject();
    SnippetEntry snippet;
    for (const Member &member : kMembers) {
        const QString name = u"snippets[%1].%2"_s.arg(QString::number(index), member.name);
        const auto text = textWithin(object.value(member.name), name, member.longest);
        if (!text)
            return failed(text.error());
        snippet.*member.field = *text;
    }
    return snippet;
}

Result<QList<SnippetEntry>, Refusal> pushedSnippets(const Request &request) {
    const auto array = arrayMember(request, kList);
    if (!array)
        return failed(array.error());
    QList<SnippetEntry> snippets;
    for (qsizetype index = 0; index < array->size(); ++index) {
        const auto snippet = snippetAt(*array, index);
        if (!snippet)
            return failed(snippet.error());
        snippets.append(*snippet);
    }
    return snippets;
}

void store(SqlRun &sql, const Session &session, const QList<SnippetEntry> &snippets) {
    const QByteArray account = utf8(session.account);
    sql.runForEach(snippets,
                   "INSERT OR REPLACE INTO snippet (account, key, id, trigger, expansion)"
                   " VALUES (?1, ?2, ?3, ?4, ?5)",
                   [&account](SqliteStatement::Use &use, const SnippetEntry &snippet) {
                       int parameter = 0;
                       use.bindText(++parameter, account);
                       for (const QString &text :
                            {snippetKey(snippet.trigger), snippet.id, snippet.trigger, snippet.expansion})
                           use.bindText(++parameter, utf8(text));
                   });
}

void merge(SqlRun &sql, const Session &session, const QList<SnippetEntry> &snippets) {
    QStringList keys;
    for (const SnippetEntry &snippet : snippets)
        keys.append(snippetKey(snippet.trigger));
    takePushed(sql, keys);
    sql.run("DELETE FROM snippet WHERE account = ?1 AND key NOT IN (SELECT key FROM pushed)"
            " AND key IN (SELECT key FROM known WHERE session = ?2 AND list = 'snippets')",
            session.account, session.id);
    store(sql, session, snippets);
    knowPushed(sql, session, kList);
}

Result<QJsonObject, Refusal> push(SqlRun &sql, const Session &session, const Request &request) {
    const auto snippets = pushedSnippets(request);
    if (!snippets)
        return failed(snippets.error());
    merge(sql, session, *snippets);
    if (sql.number("SELECT count(*) FROM snippet WHERE account = ?1", session.account) > kMostSnippets)
        return failed(tooMany(u"snippets"_s, kMostSnippets));
    return QJsonObject();
}

} // namespace

Endpoint snippetPullEndpoint(AccountDatabase &database) {
    return sessionEndpoint("GET", "/api/sync/snippets", database, pull);
}

Endpoint snippetPushEndpoint(AccountDatabase &database) {
    return sessionEndpoint("PUT", "/api/sync/snippets", database, push);
}

} // namespace velmo::localservice
