#include "localservice/account/accounts.h"

#include "base/uuid.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// Signing out tells the service nothing, so the oldest sessions of an account give way to new ones.
constexpr int kMostSessions = 50;

QByteArray newToken() {
    std::array<quint32, 8> random{};
    QRandomGenerator::system()->fillRange(random.data(), static_cast<qsizetype>(random.size()));
    const QByteArray bytes(reinterpret_cast<const char *>(random.data()), sizeof random);
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

/// The tokens are random, so a plain hash is enough: there is nothing to guess.
QByteArray hashOf(const QByteArray &token) {
    return QCryptographicHash::hash(token, QCryptographicHash::Sha256);
}

QString textOrEmpty(SqlRun &sql, const char *question, const QString &key) {
    QString text;
    sql.rows([&text](const SqliteStatement::Use &row) { text = textIn(row, 0); }, question, key);
    return text;
}

/// Takes the token out; the e-mail it stands for, or nothing.
QString spend(SqlRun &sql, const QByteArray &hash, qint64 now) {
    QString email;
    sql.rows(
        [&](const SqliteStatement::Use &row) {
            if (row.integer(1) > now)
                email = textIn(row, 0);
        },
        "DELETE FROM identity_token WHERE hash = ?1 RETURNING email, expires", hash);
    return email;
}

QString accountFor(SqlRun &sql, const QString &email, const QString &name) {
    sql.run("INSERT INTO account (id, email, name) VALUES (?1, ?2, ?3) ON CONFLICT (email) DO NOTHING",
            newLowerUuid(), email, name);
    if (!name.isEmpty())
        sql.run("UPDATE account SET name = ?2 WHERE email = ?1", email, name);
    return textOrEmpty(sql, "SELECT id FROM account WHERE email = ?1", email);
}

Session beginSession(SqlRun &sql, const QString &account, const QByteArray &token) {
    sql.run("INSERT INTO session (account, token_hash) VALUES (?1, ?2)", account, hashOf(token));
    const Session session{sql.number("SELECT last_insert_rowid()"), account};
    sql.run("DELETE FROM session WHERE account = ?1 AND id NOT IN"
            " (SELECT id FROM session WHERE account = ?1 ORDER BY id DESC LIMIT ?2)",
            account, qint64{kMostSessions});
    return session;
}

} // namespace

qint64 Accounts::secondsFromNow(std::chrono::seconds later) const {
    return std::chrono::duration_cast<std::chrono::seconds>((m_now() + later).time_since_epoch()).count();
}

Result<std::optional<QString>, Refusal> Accounts::nameOf(const QString &email) {
    return m_database.transaction([&](SqlRun &sql) -> Result<std::optional<QString>, Refusal> {
        std::optional<QString> name;
        sql.rows([&name](const SqliteStatement::Use &row) { name = textIn(row, 0); },
                 "SELECT name FROM account WHERE email = ?1", email);
        return name;
    });
}

Result<QString, Refusal> Accounts::issueIdentityToken(const QString &email) {
    const QByteArray token = newToken();
    return m_database.transaction([&](SqlRun &sql) -> Result<QString, Refusal> {
        sql.run("DELETE FROM identity_token WHERE expires <= ?1", secondsFromNow({}));
        sql.run("INSERT INTO identity_token (hash, email, expires) VALUES (?1, ?2, ?3)", hashOf(token), email,
                secondsFromNow(kIdentityTokenLifetime));
        return QString::fromLatin1(token);
    });
}

Result<Accounts::SignedIn, Refusal> Accounts::signIn(const QString &identityToken, const QString &name) {
    return m_database.transaction([&](SqlRun &sql) -> Result<SignedIn, Refusal> {
        const QString email = spend(sql, hashOf(identityToken.toUtf8()), secondsFromNow({}));
        if (email.isEmpty())
            return failed(Refusal{401, u"The identity token is unknown, used already or too old."_s});
        const QByteArray token = newToken();
        const Session session = beginSession(sql, accountFor(sql, email, name), token);
        return SignedIn{QString::fromLatin1(token), userOf(sql, session)};
    });
}

Result<Session, Refusal> sessionOf(SqlRun &sql, const QByteArray &token) {
    std::optional<Session> session;
    sql.rows(
        [&session](const SqliteStatement::Use &row) {
            session = Session{row.integer(0), textIn(row, 1)};
        },
        "SELECT id, account FROM session WHERE token_hash = ?1", hashOf(token));
    if (!session)
        return failed(Refusal{401, u"The session token is unknown. Sign in again."_s});
    return *session;
}

VelmoUser userOf(SqlRun &sql, const Session &session) {
    VelmoUser user{session.account, {}, {}, {}};
    sql.rows(
        [&user](const SqliteStatement::Use &row) {
            user.email = textIn(row, 0);
            if (const QString name = textIn(row, 1); !name.isEmpty())
                user.name = name;
        },
        "SELECT email, name FROM account WHERE id = ?1", session.account);
    return user;
}

} // namespace velmo::localservice
