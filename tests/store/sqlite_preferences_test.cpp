#include "store/sqlite_preferences.h"

#include "support/child_process.h"
#include "support/log_capture.h"
#include "support/qt_printing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <atomic>
#include <deque>
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

thread_local int syncsOfThisThread = 0;
std::atomic<int> syncs = 0;

void countSync() {
    ++syncs;
    ++syncsOfThisThread;
}

} // namespace

// What SQLite calls to wait for the disk, counted.
extern "C" int fsync(int descriptor) {
    countSync();
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" int fdatasync(int descriptor) {
    countSync();
    return static_cast<int>(::syscall(SYS_fdatasync, descriptor));
}

namespace velmo {

namespace {

using testing::ChildProcess;

const QString kKey = u"velmoDictionary"_s;

class SqlitePreferencesTest : public ::testing::Test {
protected:
    [[nodiscard]] QString file(const QString &suffix = {}) const {
        return m_directory.filePath(u"velmo/preferences.sqlite"_s + suffix);
    }
    [[nodiscard]] QStringList files() const {
        return QDir(m_directory.filePath(u"velmo"_s)).entryList(QDir::Files);
    }

    void runSql(const char *sql) const {
        sqlite3 *database = nullptr;
        ASSERT_EQ(sqlite3_open(file().toUtf8().constData(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    testing::LogCapture log;

private:
    QTemporaryDir m_directory;
};

std::optional<PreferenceValue> next(const std::optional<PreferenceValue> &stored) {
    return stored ? std::get<qint64>(*stored) + 1 : qint64(1);
}

mode_t modeOf(const QString &path) {
    struct stat status {};
    return ::stat(path.toUtf8().constData(), &status) == 0 ? status.st_mode & 0777 : 0;
}

} // namespace

TEST_F(SqlitePreferencesTest, ReadsWhatIsNotOfTheKindItIsSaidToBeAsAbsent) {
    SqlitePreferences preferences(file());
    preferences.set(kKey, u"1"_s);
    runSql("INSERT INTO preference VALUES ('a', 'bool', 7), ('b', 'float', 1.5), ('c', 'string', x'00'),"
           " ('d', 'date', 'today'), ('e', 'data', 'text'), ('f', 'integer', 1.5)");
    EXPECT_EQ(preferences.all().size(), 1U);
    EXPECT_EQ(preferences.value(u"a"_s), std::nullopt);
    EXPECT_TRUE(preferences.set(u"a"_s, true));
    EXPECT_EQ(preferences.boolean(u"a"_s), true);
}

TEST_F(SqlitePreferencesTest, BeginsTheFileAtTheFirstChangeForItsOwnerAlone) {
    const mode_t before = ::umask(0);
    {
        SqlitePreferences preferences(file());
        EXPECT_EQ(preferences.read(kKey), std::nullopt);
        EXPECT_FALSE(QFile::exists(file()));
        preferences.ensureFile();
        EXPECT_TRUE(QFile::exists(file()));
        preferences.set(kKey, u"x"_s);
        EXPECT_EQ(preferences.string(kKey), u"x"_s);
        EXPECT_EQ(modeOf(QFileInfo(file()).path()), 0700U);
        for (const auto &suffix : {u""_s, u"-wal"_s, u"-shm"_s, u".lock"_s})
            EXPECT_EQ(modeOf(file(suffix)), 0600U) << suffix.toStdString();
    }
    ::umask(before);
    EXPECT_EQ(files(), (QStringList{u"preferences.sqlite"_s, u"preferences.sqlite.lock"_s}));
    ::chmod(file().toUtf8().constData(), 0644);
    SqlitePreferences(file()).set(kKey, u"y"_s);
    EXPECT_EQ(modeOf(file()), 0600U);
}

TEST_F(SqlitePreferencesTest, SeesWhatAnotherProcessChangesAtTheNextRead) {
    SqlitePreferences preferences(file());
    EXPECT_EQ(preferences.string(kKey), std::nullopt);
    for (const auto &text : {u"first"_s, u"second"_s}) {
        ChildProcess child([&] { return SqlitePreferences(file()).set(kKey, text) ? 0 : 1; });
        ASSERT_EQ(child.wait(), 0);
        EXPECT_EQ(preferences.string(kKey), text);
    }
}

TEST_F(SqlitePreferencesTest, RefusesAChangeWhileTheFileStaysBusyAndKeepsReading) {
    SqlitePreferences holder(file());
    SqlitePreferences preferences(file(), std::chrono::milliseconds(20));
    holder.change(kKey, [&](const auto &) {
        EXPECT_FALSE(preferences.set(kKey, u"secret"_s));
        EXPECT_EQ(preferences.string(kKey), std::nullopt);
        return PreferenceValue(u"kept"_s);
    });
    EXPECT_THAT(log.lines(),
                ElementsAre(u"🎙️ [Prefs] Could not store velmoDictionary: database is locked"_s));
    EXPECT_EQ(preferences.string(kKey), u"kept"_s);
}

TEST_F(SqlitePreferencesTest, LosesNoChangeOfSeveralProcesses) {
    constexpr int kProcesses = 6;
    constexpr int kChanges = 50;
    std::deque<ChildProcess> children;
    for (int i = 0; i < kProcesses; ++i) {
        children.emplace_back([this] {
            SqlitePreferences preferences(file());
            int stored = 0;
            while (stored < kChanges && preferences.change(kKey, next))
                ++stored;
            return stored == kChanges ? 0 : 1;
        });
    }
    for (ChildProcess &child : children)
        EXPECT_EQ(child.wait(), 0);
    EXPECT_EQ(SqlitePreferences(file()).integer(kKey), kProcesses * kChanges);
}

TEST_F(SqlitePreferencesTest, KeepsWhatWasStoredWhenAProcessIsKilledAtAnyMoment) {
    qint64 acknowledged = 0;
    for (int round = 0; round < 25; ++round) {
        int pipe[2] = {};
        ASSERT_EQ(::pipe(pipe), 0);
        // Every other round opens and closes the file for each change, which also brings it to the disk.
        ChildProcess child([&] {
            auto preferences = std::make_unique<SqlitePreferences>(file());
            for (;;) {
                preferences->change(kKey, next);
                const qint64 count = preferences->integer(kKey).value_or(0);
                preferences->set(u"velmoUser"_s, QByteArray(static_cast<qsizetype>(count % 50) * 1000, 'x'));
                if (::write(pipe[1], &count, sizeof(count)) < 0)
                    return 1;
                if (round % 2 == 1)
                    preferences = std::make_unique<SqlitePreferences>(file());
            }
        });
        ::close(pipe[1]);
        for (int changes = 0; changes <= round % 7; ++changes)
            ASSERT_EQ(::read(pipe[0], &acknowledged, sizeof(acknowledged)), ssize_t(sizeof(acknowledged)));
        child.kill();
        child.wait();
        while (::read(pipe[0], &acknowledged, sizeof(acknowledged)) > 0) {
        }
        ::close(pipe[0]);

        const qint64 stored = SqlitePreferences(file()).integer(kKey).value_or(0);
        EXPECT_GE(stored, acknowledged);
        EXPECT_LE(stored, acknowledged + 1);
    }
    EXPECT_THAT(log.lines(), IsEmpty());
    runSql("SELECT * FROM preference");
}

TEST_F(SqlitePreferencesTest, FollowsWhenAnotherFileTakesThePlace) {
    SqlitePreferences preferences(file());
    preferences.set(kKey, u"old"_s);
    EXPECT_EQ(preferences.string(kKey), u"old"_s);
    QFile::remove(file());
    EXPECT_EQ(preferences.string(kKey), std::nullopt);

    SqlitePreferences(file()).set(kKey, u"new"_s);
    EXPECT_EQ(preferences.string(kKey), u"new"_s);
    EXPECT_TRUE(preferences.set(kKey, u"newer"_s));
    EXPECT_EQ(SqlitePreferences(file()).string(kKey), u"newer"_s);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(SqlitePreferencesTest, TakesNothingFromTheLogOfAFileThatIsGone) {
    ChildProcess killed([this]() -> int {
        SqlitePreferences preferences(file());
        preferences.set(kKey, u"old"_s);
        ::_exit(0);
    });
    killed.wait();
    ASSERT_TRUE(QFile::exists(file(u"-wal"_s)));
    QFile::remove(file());
    SqlitePreferences(file()).set(u"velmoUser"_s, u"new"_s);
    EXPECT_EQ(SqlitePreferences(file()).string(kKey), std::nullopt);
}

TEST_F(SqlitePreferencesTest, LeavesWaitingForTheDiskToItsOwnThread) {
    syncs = 0;
    syncsOfThisThread = 0;
    int waited = 0;
    {
        SqlitePreferences preferences(file());
        for (int i = 0; i < 3; ++i) {
            preferences.change(kKey, next);
            EXPECT_TRUE(preferences.integer(kKey));
        }
        waited = syncsOfThisThread;
    }
    EXPECT_EQ(waited, 0);
    EXPECT_GT(syncs, 0) << "the last change is on the disk at the end";
}

} // namespace velmo
