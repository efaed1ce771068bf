#include "localservice/sync/endpoints.h"

#include "localservice/account/session_endpoint.h"
#include "localservice/http/json_request.h"
#include "localservice/sync/known_keys.h"
#include "localservice/sync/sync_limits.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr QLatin1StringView kList("snippets");

struct Snippet {
    QString id;
    QString trigger;
    QString expansion;

    [[nodiscard]] QString key() const { return trigger.toLower(); }
};

struct Member {
    const char *name;
    QString Snippet::*field;
    qsizetype longest;
};

constexpr Member kMembers[] = {
    {"id", &Snippet::id, kLongestTrigger},
    {"trigger", &Snippet::trigger, kLongestTrigger},
    {"expansion", &Snippet::expansion, kLongestExpansion},
};

Result<QJsonObject, Refusal> pull(SqlRun &sql, const Session &session, const Request &) {
    knowPulled(sql, session, kList, u"SELECT key FROM snippet WHERE account = ?1"_s);
    QJsonArray snippets;
    sql.rows(
        [&snippets](const SqliteStatement::Use &row) {
            QJsonObject snippet;
            int column = 0;
            for (const Member &member : kMembers)
                snippet.insert(QLatin1StringView(member.name), textIn(row, column++));
            snippets.append(snippet);
        },
        "SELECT id, trigger, expansion FROM snippet WHERE account = ?1 ORDER BY trigger", session.account);
    return QJsonObject{{kList, snippets}};
}

Result<Snippet, Refusal> snippetAt(const QJsonArray &array, qsizetype index) {
    const QJsonObject object = array.at(index).toObject();
    Snippet snippet;
    for (const Member &member : kMembers) {
        const QLatin1StringView memberName(member.name);
        const QString name = u"snippets[%1].%2"_s.arg(QString::number(index), memberName);
        const auto text = textWithin(object.value(memberName), name, member.longest);
        if (!text)
            return failed(text.error());
        snippet.*member.field = *text;
    }
    return snippet;
}

Result<QList<Snippet>, Refusal> pushedSnippets(const Request &request) {
    const auto array = arrayMember(request, kList);
    if (!array)
        return failed(array.error());
    QList<Snippet> snippets;
    for (qsizetype index = 0; index < array->size(); ++index) {
        const auto snippet = snippetAt(*array, index);
        if (!snippet)
            return failed(snippet.error());
        snippets.append(*snippet);
    }
    return snippets;
}

void store(SqlRun &sql, const Session &session, const QList<Snippet> &snippets) {
    const QByteArray account = utf8(session.account);
    sql.runForEach(
        snippets,
        "INSERT OR REPLACE INTO snippet (account, key, id, trigger, expansion)"
        " VALUES (?1, ?2, ?3, ?4, ?5)",
        [&account](SqliteStatement::Use &use, const Snippet &snippet) {
            int parameter = 0;
            use.bindText(++parameter, account);
            for (const QString &text : {snippet.key(), snippet.id, snippet.trigger, snippet.expansion})
                use.bindText(++parameter, utf8(text));
        });
}

void merge(SqlRun &sql, const Session &session, const QList<Snippet> &snippets) {
    QStringList keys;
    for (const Snippet &snippet : snippets)
        keys.append(snippet.key());
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
