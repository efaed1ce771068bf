#pragma once

#include "localservice/account/account_database.h"
#include "service/account/velmo_user.h"

#include <chrono>
#include <functional>

namespace velmo::localservice {

/// How long an identity token is good for: time to come back from the browser.
inline constexpr std::chrono::minutes kIdentityTokenLifetime{5};

/// A device that is signed in.
struct Session {
    qint64 id = 0;
    QString account;
};

/// Who there is, and who is signed in. Identity tokens (from the sign-in page, good once and for a few minutes) and
/// session tokens are 256 random bits; only their hashes are stored, so the file gives nobody a way in. Any thread.
class Accounts {
public:
    using Now = std::function<std::chrono::system_clock::time_point()>;

    /// The database must outlive it.
    explicit Accounts(AccountDatabase &database, Now now = std::chrono::system_clock::now)
        : m_database(database), m_now(std::move(now)) {}

    /// What the account with that e-mail is called (upper and lower case are the same); nothing when there is none.
    [[nodiscard]] Result<std::optional<QString>, Refusal> nameOf(const QString &email);

    /// A token by which somebody proves to have that e-mail.
    [[nodiscard]] Result<QString, Refusal> issueIdentityToken(const QString &email);

    struct SignedIn {
        QString token;
        VelmoUser user;
    };

    /// Spends an identity token for a session; the account is made when there is none with the token's e-mail. A name
    /// that is not empty becomes the account's. 401 when the token is unknown, spent or too old.
    [[nodiscard]] Result<SignedIn, Refusal> signIn(const QString &identityToken, const QString &name);

private:
    [[nodiscard]] qint64 secondsFromNow(std::chrono::seconds later) const;

    AccountDatabase &m_database;
    const Now m_now;
};

/// The session a token belongs to, or 401.
[[nodiscard]] Result<Session, Refusal> sessionOf(SqlRun &sql, const QByteArray &token);

/// Who is signed in.
[[nodiscard]] VelmoUser userOf(SqlRun &sql, const Session &session);

} // namespace velmo::localservice
