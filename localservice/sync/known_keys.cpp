#include "localservice/sync/known_keys.h"

namespace velmo::localservice {

void takePushed(SqlRun &sql, const QStringList &keys) {
    sql.run("DELETE FROM pushed");
    sql.runForEach(keys, "INSERT OR IGNORE INTO pushed (key) VALUES (?1)",
                   [](SqliteStatement::Use &use, const QString &key) { use.bindText(1, utf8(key)); });
}

void knowPulled(SqlRun &sql, const Session &session, const QString &list, const QString &selectKeys) {
    sql.run("DELETE FROM known WHERE session = ?1 AND list = ?2", session.id, list);
    const QByteArray insert =
        "INSERT INTO known (session, list, key) SELECT ?2, ?3, key FROM (" + selectKeys.toLatin1() + ')';
    sql.run(insert.constData(), session.account, session.id, list);
}

void knowPushed(SqlRun &sql, const Session &session, const QString &list) {
    sql.run("DELETE FROM known WHERE session = ?1 AND list = ?2", session.id, list);
    sql.run("INSERT INTO known (session, list, key) SELECT ?1, ?2, key FROM pushed", session.id, list);
}

} // namespace velmo::localservice
