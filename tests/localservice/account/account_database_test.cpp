#include "localservice/account/running_accounts.h"
#include "support/files.h"
#include "support/small_disk.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::errorOf;
using testing::RunningAccounts;
using velmo::testing::contentOf;
using velmo::testing::SmallDisk;
using velmo::testing::writeFile;

namespace {

const char *const kWords = R"({"words": ["Lyse"]})";
const char *const kPulled = R"({"deletedWords":[],"words":["Lyse"]})";

QByteArray databaseOfAnotherProgram() {
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"theirs"_s);
    sqlite3 *database = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &database);
    sqlite3_exec(database, "CREATE TABLE theirs (x)", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    return contentOf(path);
}

unsigned modeOf(const QString &path) {
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 0777U : 0;
}

} // namespace

TEST(AccountDatabase, OutlivesTheServiceAndIsPrivate) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"made/on the way"_s);
    std::string token;
    {
        RunningAccounts service(path);
        token = service.signIn("kari@example.org");
        ASSERT_EQ(service.send("PUT", "/api/sync/dictionary", token, kWords)->status, 200);
        const QDir files(path);
        EXPECT_GE(files.entryList(QDir::Files).size(), 2) << "the log beside the file";
        for (const QString &name : files.entryList(QDir::Files)) {
            EXPECT_EQ(modeOf(files.filePath(name)), 0600U) << name.toStdString();
            EXPECT_FALSE(contentOf(files.filePath(name)).contains(token.c_str())) << "hashed only";
        }
        EXPECT_EQ(modeOf(path), 0700U);
    }
    const RunningAccounts again(path);
    EXPECT_EQ(again.send("GET", "/api/sync/dictionary", token)->body, kPulled);
}

TEST(AccountDatabase, DoesNotWriteToAFileThatIsHalfDamaged) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"accounts.sqlite"_s);
    {
        RunningAccounts service(directory.path());
        ASSERT_NE(service.signIn("kari@example.org"), "");
    }
    QByteArray content = contentOf(path);
    constexpr qsizetype page = 4096;
    ASSERT_GT(content.size(), 3 * page);
    content.replace(2 * page, page, QByteArray(page, 'x')); // neither the header nor the list of tables
    writeFile(path, content);

    RunningAccounts service(directory.path());
    EXPECT_EQ(service.signIn("kari@example.org"), "");
    EXPECT_EQ(service.send("POST", "/api/auth/me", "token")->status, 503);
    EXPECT_EQ(contentOf(path), content);
}

TEST(AccountDatabase, LeavesWhatItCannotUse) {
    const std::pair<const char *, QByteArray> cases[] = {{"no database", QByteArray(5000, 'x')},
                                                         {"half a header", "SQLite format 3"},
                                                         {"another program's", databaseOfAnotherProgram()}};
    for (const auto &[name, content] : cases) {
        const QTemporaryDir directory;
        const QString file = directory.filePath(u"accounts.sqlite"_s);
        writeFile(file, content);
        RunningAccounts service(directory.path());
        const auto reply = service.send("POST", "/api/auth/me", "token");
        EXPECT_EQ(reply->status, 503) << name;
        EXPECT_FALSE(errorOf(*reply).isEmpty()) << name;
        EXPECT_EQ(contentOf(file), content) << name;
        // Once it is put right, the service goes on.
        ASSERT_TRUE(QFile::remove(file));
        EXPECT_NE(service.signIn("kari@example.org"), "") << name;
    }
}

TEST(AccountDatabase, SaysThatItCannotMakeItsDirectory) {
    const QTemporaryDir directory;
    const QString inTheWay = directory.filePath(u"file"_s);
    writeFile(inTheWay, "x");
    const RunningAccounts service(inTheWay + u"/data"_s);
    const auto reply = service.send("GET", "/api/sync/stats", "token");
    EXPECT_EQ(reply->status, 503);
    EXPECT_FALSE(errorOf(*reply).isEmpty());
}

TEST(AccountDatabase, LosesNothingWhenTheDiskIsFull) {
    const SmallDisk disk;
    if (!disk.isMounted())
        GTEST_SKIP() << "this process may not mount";
    RunningAccounts service(disk.path(u"data"_s));
    const std::string token = service.signIn("kari@example.org");
    ASSERT_EQ(service.send("PUT", "/api/sync/dictionary", token, kWords)->status, 200);
    std::string many = R"({"words": ["Lyse")";
    for (int number = 0; number < 20'000; ++number)
        many += ",\"word number " + std::to_string(number) + '"';
    disk.fill();
    const auto full = service.send("PUT", "/api/sync/dictionary", token, many + "]}");
    EXPECT_EQ(full->status, 507) << full->body;
    EXPECT_FALSE(errorOf(*full).isEmpty());
    disk.empty();
    EXPECT_EQ(service.send("GET", "/api/sync/dictionary", token)->body, kPulled);
}

} // namespace velmo::localservice
