#include "localservice/account/account_database.h"

#include "localservice/account/account_schema.h"
#include "store/private_files.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstdio>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// For other processes with the same directory; their transactions are as short as ours.
constexpr std::chrono::milliseconds kPatience{5000};

} // namespace

AccountDatabase::AccountDatabase(const QString &directory)
    : m_directory(QDir::cleanPath(directory)),
      m_file(QFile::encodeName(m_directory + u"/accounts.sqlite"_s)) {}

SqliteCode AccountDatabase::open() {
    if (m_connection && !m_connection->fileHasMoved())
        return SQLITE_OK;
    m_connection.reset();
    if (const SqliteCode code = makeFile(); code != SQLITE_OK)
        return code;
    auto connection = SqliteConnection::open(m_file, SqliteConnection::Access::ReadWrite, kPatience);
    if (!connection)
        return connection.error();
    const SqliteCode code = prepareAccounts(*connection);
    if (code == SQLITE_OK)
        m_connection = std::move(*connection);
    return code;
}

SqliteCode AccountDatabase::makeFile() const {
    makePrivateDirectories(QFile::encodeName(m_directory));
    if (makePrivateFile(m_file))
        return SQLITE_OK;
    if (errno != EEXIST)
        return codeOfErrno();
    ::chmod(m_file.constData(), kPrivateFile);
    return SQLITE_OK;
}

Refusal AccountDatabase::refusalFor(SqliteCode code) {
    m_connection.reset();
    const QString reason = describe(code);
    const QString line = u"The account data in %1 cannot be used: %2\n"_s.arg(m_directory, reason);
    std::fputs(line.toLocal8Bit().constData(), stderr);
    const bool isFull = (code & 0xff) == SQLITE_FULL;
    return {isFull ? 507 : 503, u"The account data of the service cannot be used: %1."_s.arg(reason)};
}

} // namespace velmo::localservice
