#pragma once

#include "localservice/account_service.h"

#include "localservice/http/running_server.h"

#include <QTemporaryDir>
#include <atomic>

namespace velmo::localservice::testing {

/// The account part of the service on a free port, with a data directory and a clock of its own.
class RunningAccounts {
public:
    RunningAccounts() : RunningAccounts(QString()) {}
    /// With an empty path the directory is a temporary one.
    explicit RunningAccounts(const QString &directory);

    [[nodiscard]] QString directory() const { return m_directory; }
    [[nodiscard]] int port() const { return m_server.port(); }
    [[nodiscard]] Accounts &accounts() { return m_accounts; }
    void passTime(std::chrono::seconds time) { m_passed += time.count(); }

    [[nodiscard]] httplib::Client client() const { return m_server.client(); }

    /// "GET", "POST" or "PUT" with the token (none when empty) and the body.
    httplib::Result send(const char *method, const char *path, const std::string &token,
                         const std::string &body = {}) const;

    /// The token of a new session of the account with that e-mail.
    std::string signIn(const char *email);

private:
    QTemporaryDir m_temporary;
    const QString m_directory;
    std::atomic<qint64> m_passed = 0;
    AccountDatabase m_database;
    Accounts m_accounts;
    RunningServer m_server;
};

} // namespace velmo::localservice::testing
