#include "localservice/account/running_accounts.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice::testing {

RunningAccounts::RunningAccounts(const QString &directory)
    : m_directory(directory.isEmpty() ? m_temporary.filePath(u"share/velmo"_s) : directory),
      m_database(m_directory),
      m_accounts(m_database,
                 [this] {
                     constexpr qint64 start = 1'790'000'000;
                     return std::chrono::system_clock::time_point(std::chrono::seconds(start + m_passed));
                 }),
      m_server(accountServiceEndpoints(m_database, m_accounts)) {}

httplib::Result RunningAccounts::send(const char *method, const char *path, const std::string &token,
                                      const std::string &body) const {
    httplib::Request request;
    request.method = method;
    request.path = path;
    request.body = body;
    if (!token.empty())
        request.set_header("Authorization", "Bearer " + token);
    return client().send(request);
}

std::string RunningAccounts::signIn(const char *email) {
    const auto identity = m_accounts.issueIdentityToken(QString::fromUtf8(email));
    const auto signedIn = m_accounts.signIn(identity.value_or(QString()), u"Kari"_s);
    return signedIn ? signedIn->token.toStdString() : std::string();
}

} // namespace velmo::localservice::testing
