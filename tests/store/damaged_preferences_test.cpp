#include "store/sqlite_preferences.h"

#include "support/child_process.h"
#include "support/files.h"
#include "support/log_capture.h"
#include "support/qt_printing.h"
#include "support/small_disk.h"

#include <QDir>
#include <QFile>
#include <deque>
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace velmo {

namespace {

using testing::ChildProcess;

const QString kKey = u"velmoDictionary"_s;

/// A file of several pages, all of it in the file itself.
QByteArray intactFile() {
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"intact"_s);
    {
        SqlitePreferences preferences(path);
        for (int i = 0; i < 50; ++i)
            preferences.set(QString::number(i), QByteArray(500, 'x'));
    }
    return testing::contentOf(path);
}

QByteArray databaseWith(const char *sql) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"foreign"_s);
    sqlite3 *database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
    sqlite3_close(database);
    return testing::contentOf(path);
}

QByteArray withGarbageAfter(const QByteArray &file, qsizetype offset) {
    return file.left(offset) + QByteArray(file.size() - offset, '\xA5');
}

class DamagedPreferencesTest : public ::testing::Test {
protected:
    [[nodiscard]] QString file(const QString &suffix = {}) const {
        return m_directory.filePath(u"preferences.sqlite"_s + suffix);
    }
    void write(const QByteArray &bytes) const { testing::writeFile(file(), bytes); }

    testing::LogCapture log;

private:
    QTemporaryDir m_directory;
};

} // namespace

TEST_F(DamagedPreferencesTest, SetsAsideWhatIsNoIntactPreferencesFile) {
    const QByteArray intact = intactFile();
    ASSERT_GT(intact.size(), 5 * 4096);
    const std::pair<const char *, QByteArray> rows[] = {
        {"text", "velmoPrimaryLanguage = no\n" + QByteArray(2000, '\n')},
        {"a few bytes", "xyz"},
        {"zeros, as a file system may leave after a power cut", QByteArray(16384, '\0')},
        {"cut off", intact.left(intact.size() / 2 + 100)},
        {"garbage after the first page", withGarbageAfter(intact, 4096)},
        {"garbage after the header", withGarbageAfter(intact, 100)},
        {"another program's database", databaseWith("CREATE TABLE moz_places (id); PRAGMA user_version = 3")},
        {"our mark without our table",
         databaseWith("PRAGMA application_id = 1449946479; CREATE TABLE other (id)")},
    };
    int number = 0;
    for (const auto &[what, bytes] : rows) {
        SCOPED_TRACE(what);
        write(bytes);
        log.clear();
        const QString aside = ++number == 1 ? u".damaged"_s : u".damaged-"_s + QString::number(number);
        {
            SqlitePreferences preferences(file());
            EXPECT_THAT(preferences.all(), IsEmpty());
            EXPECT_THAT(
                log.lines(),
                ElementsAre(u"🎙️ [Prefs] preferences.sqlite was damaged or not Velmo's; it is kept as "
                            "preferences.sqlite%1 and a new one begun"_s.arg(aside)));
            EXPECT_TRUE(preferences.set(kKey, u"new"_s));
            EXPECT_EQ(preferences.string(kKey), u"new"_s);
        }
        EXPECT_EQ(testing::contentOf(file(aside)), bytes);
    }
}

TEST_F(DamagedPreferencesTest, BeginsWithTheChangeAndWithoutAWordWhereNothingIsLost) {
    for (const char *damage : {"no database", ""}) {
        write(damage);
        log.clear();
        SqlitePreferences preferences(file());
        EXPECT_TRUE(preferences.set(kKey, u"new"_s)) << damage;
        EXPECT_EQ(preferences.string(kKey), u"new"_s) << damage;
        EXPECT_EQ(log.lines().isEmpty(), *damage == '\0') << damage;
    }
}

TEST_F(DamagedPreferencesTest, IsSetAsideOnceWhenSeveralProcessesMeetIt) {
    const QByteArray garbage = withGarbageAfter(intactFile(), 4096);
    for (int round = 0; round < 10; ++round) {
        const QByteArray bytes = round % 2 == 0 ? QByteArray("no database") : garbage;
        write(bytes);
        QFile::remove(file(u".damaged"_s));
        int start[2] = {};
        ASSERT_EQ(::pipe(start), 0);
        std::deque<ChildProcess> children;
        for (int i = 0; i < 6; ++i) {
            children.emplace_back([this, i, &start] {
                ::close(start[1]);
                char end = 0;
                (void)!::read(start[0], &end, 1); // all begin when the last writer of the pipe is gone
                SqlitePreferences preferences(file());
                (void)preferences.all();
                return preferences.set(QString::number(i), true) ? 0 : 1;
            });
        }
        ::close(start[0]);
        ::close(start[1]);
        for (ChildProcess &child : children)
            EXPECT_EQ(child.wait(), 0);
        EXPECT_EQ(SqlitePreferences(file()).all().size(), 6U);
        EXPECT_EQ(testing::contentOf(file(u".damaged"_s)), bytes);
        EXPECT_FALSE(QFile::exists(file(u".damaged-2"_s)));
    }
}

TEST_F(DamagedPreferencesTest, IsNoticedByAProcessThatHasTheFileOpen) {
    SqlitePreferences(file()).set(kKey, u"old"_s);
    SqlitePreferences preferences(file());
    EXPECT_EQ(preferences.string(kKey), u"old"_s);
    ChildProcess other([this] {
        write("no database");
        return SqlitePreferences(file()).set(kKey, u"new"_s) ? 0 : 1;
    });
    ASSERT_EQ(other.wait(), 0);
    EXPECT_EQ(preferences.string(kKey), u"new"_s);
}

// A disk that is full or read-only is no damage.

class UnwritablePreferencesTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!disk.isMounted())
            GTEST_SKIP() << "this process may not mount a file system";
    }

    [[nodiscard]] QString file() const { return disk.path(u"preferences.sqlite"_s); }

    testing::SmallDisk disk;
    testing::LogCapture log;
};

TEST_F(UnwritablePreferencesTest, AFullDiskRefusesChangesUntilThereIsRoom) {
    SqlitePreferences preferences(file());
    preferences.set(kKey, u"old"_s);
    disk.fill();
    while (preferences.set(kKey, QByteArray(30'000, 's'))) { // into what the log has taken already
    }
    EXPECT_THAT(log.lines(),
                ElementsAre(u"🎙️ [Prefs] Could not store velmoDictionary: database or disk is full"_s));
    const auto stored = preferences.value(kKey);
    EXPECT_NE(stored, std::nullopt);
    EXPECT_EQ(SqlitePreferences(file()).value(kKey), stored);

    disk.empty();
    EXPECT_TRUE(preferences.set(kKey, u"new"_s));
    EXPECT_EQ(SqlitePreferences(file()).string(kKey), u"new"_s);
}

TEST_F(UnwritablePreferencesTest, AFullDiskIsReadByAProcessThatStartsOnIt) {
    SqlitePreferences(file()).set(kKey, u"old"_s);
    disk.fill();
    SqlitePreferences preferences(file());
    EXPECT_EQ(preferences.string(kKey), u"old"_s);
    EXPECT_FALSE(preferences.read(kKey)) << "without the log nobody knows whether it is old";
    EXPECT_FALSE(preferences.set(kKey, QByteArray(100'000, 's')));
    EXPECT_EQ(preferences.string(kKey), u"old"_s);
    disk.empty();
    EXPECT_TRUE(preferences.set(kKey, u"new"_s));
    EXPECT_EQ(preferences.read(kKey), PreferenceValue(u"new"_s));
}

TEST_F(UnwritablePreferencesTest, AFullDiskBeginsNoFile) {
    disk.fill();
    SqlitePreferences preferences(file());
    EXPECT_FALSE(preferences.set(kKey, u"new"_s));
    EXPECT_EQ(preferences.string(kKey), std::nullopt);
    disk.empty();
    EXPECT_TRUE(preferences.set(kKey, u"new"_s));
}

TEST_F(UnwritablePreferencesTest, AReadOnlyDiskIsReadAndRefusesChanges) {
    SqlitePreferences(file()).set(kKey, u"old"_s);
    disk.setReadOnly(true);
    SqlitePreferences preferences(file());
    EXPECT_EQ(preferences.string(kKey), u"old"_s);
    EXPECT_FALSE(preferences.set(kKey, u"secret"_s));
    EXPECT_EQ(preferences.string(kKey), u"old"_s);
    EXPECT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines().value(0).startsWith(u"🎙️ [Prefs] Could not store velmoDictionary: "_s));

    disk.setReadOnly(false);
    EXPECT_TRUE(preferences.set(kKey, u"new"_s));
    EXPECT_EQ(preferences.string(kKey), u"new"_s);
}

TEST_F(UnwritablePreferencesTest, AReadOnlyDiskShowsWhatAKilledProcessLeftInTheLog) {
    ChildProcess killed([this]() -> int {
        SqlitePreferences preferences(file());
        preferences.set(kKey, u"old"_s);
        ::_exit(0);
    });
    killed.wait();
    ASSERT_TRUE(QFile::exists(file() + u"-wal"_s));
    disk.setReadOnly(true);
    EXPECT_EQ(SqlitePreferences(file()).string(kKey), u"old"_s);
}

} // namespace velmo
