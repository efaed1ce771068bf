#include "store/preferences_file.h"

#include "base/log.h"
#include "store/preference_table.h"
#include "store/private_files.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr const char *kWal = "-wal";
constexpr const char *kShm = "-shm";
constexpr const char *kJournal = "-journal";
constexpr const char *kLock = ".lock";

bool exists(const QByteArray &path) {
    struct stat status {};
    return ::stat(path.constData(), &status) == 0;
}

QByteArray directoryOf(const QByteArray &path) {
    return path.left(path.lastIndexOf('/'));
}

bool isIntact(const SqliteConnection &connection) {
    const auto report = connection.answer("PRAGMA quick_check(1)");
    return report ? *report == "ok" : !isDamage(report.error());
}

using Content = PreferenceTable::Content;

Result<Content, SqliteCode> thoroughContentOf(const QByteArray &path) {
    if (!exists(path))
        return Content::Nothing;
    const auto connection = SqliteConnection::open(path, SqliteConnection::Access::ReadWrite, kPatience);
    if (!connection)
        return failed(connection.error());
    const auto content = PreferenceTable::contentOf(*connection);
    if (content && *content == Content::Preferences && !isIntact(*connection))
        return Content::AnotherThing;
    return content;
}

QString fileNameOf(const QByteArray &path) {
    return QFileInfo(QFile::decodeName(path)).fileName();
}

QByteArray freeNameFor(const QByteArray &path) {
    const QByteArray name = path + ".damaged";
    QByteArray candidate = name;
    for (int number = 2; exists(candidate); ++number)
        candidate = name + '-' + QByteArray::number(number);
    return candidate;
}

/// Moves what SQLite keeps beside a file along with it. The index goes: SQLite makes it anew.
void moveCompanions(const QByteArray &from, const QByteArray &to) {
    for (const char *suffix : {kWal, kJournal})
        ::rename((from + suffix).constData(), (to + suffix).constData());
    ::unlink((from + kShm).constData());
}

void removeCompanions(const QByteArray &path) {
    for (const char *suffix : {kWal, kShm, kJournal})
        ::unlink((path + suffix).constData());
}

} // namespace

PreferencesFile::PreferencesFile(const QString &path) {
    // A link, as people who keep their settings elsewhere make, is followed here once, as SQLite does: the file
    // itself is what is renamed and what the others lie beside.
    const QFileInfo file(path);
    const QString target = file.canonicalFilePath(); // empty where there is no file
    m_path = QFile::encodeName(target.isEmpty() ? file.absoluteFilePath() : target);
}

bool PreferencesFile::exists() const {
    return velmo::exists(m_path) || (errno != ENOENT && errno != ENOTDIR);
}

Result<std::optional<FileLock>, SqliteCode> PreferencesFile::holdInPlace() const {
    auto lock = FileLock::acquire(m_path + kLock, FileLock::Kind::Shared, kPatience);
    if (lock)
        return std::optional(std::move(*lock));
    if (lock.error() == SQLITE_BUSY)
        return failed(lock.error());
    return std::nullopt; // where there can be no lock file, nobody can exchange the file either
}

void PreferencesFile::keepPrivate() const {
    // By name: closing a descriptor of our own would drop SQLite's locks on the file.
    for (const char *suffix : {"", kWal, kShm}) {
        const QByteArray path = m_path + suffix;
        struct stat status {};
        const bool isFile = ::stat(path.constData(), &status) == 0 && S_ISREG(status.st_mode);
        if (isFile && (status.st_mode & 077) != 0)
            ::chmod(path.constData(), kPrivateFile);
    }
}

SqliteCode PreferencesFile::ensure() const {
    makePrivateDirectories(directoryOf(m_path));
    const auto lock = FileLock::acquire(m_path + kLock, FileLock::Kind::Exclusive, kPatience);
    if (!lock)
        return lock.error();
    const auto content = thoroughContentOf(m_path); // again: another process may have been here first
    if (!content)
        return content.error();
    switch (*content) {
    case Content::Preferences:
        return SQLITE_OK;
    case Content::AnotherThing:
        if (const SqliteCode code = setAside(); code != SQLITE_OK)
            return code;
        return begin();
    case Content::Nothing:
        return begin();
    }
    return SQLITE_INTERNAL;
}

SqliteCode PreferencesFile::setAside() const {
    keepPrivate(); // a damaged file still holds what was dictated
    const QByteArray name = freeNameFor(m_path);
    if (::rename(m_path.constData(), name.constData()) != 0)
        return codeOfErrno();
    moveCompanions(m_path, name);
    log(LogTag::Prefs, u"%1 was damaged or not Velmo's; it is kept as %2 and a new one begun"_s.arg(
                           fileNameOf(m_path), fileNameOf(name)));
    return SQLITE_OK;
}

SqliteCode PreferencesFile::begin() const {
    // Made under another name, so that nobody ever finds half of it.
    const QByteArray fresh = m_path + ".new";
    ::unlink(fresh.constData());
    removeCompanions(fresh);
    if (!makePrivateFile(fresh))
        return codeOfErrno();
    SqliteCode code = SQLITE_OK;
    {
        const auto connection = SqliteConnection::open(fresh, SqliteConnection::Access::ReadWrite, kPatience);
        code = connection ? PreferenceTable::create(*connection) : connection.error();
    }
    if (code != SQLITE_OK)
        return code;
    removeCompanions(m_path); // a log left by a file that is gone would be taken for this one's
    return ::rename(fresh.constData(), m_path.constData()) == 0 ? SQLITE_OK : codeOfErrno();
}

} // namespace velmo
