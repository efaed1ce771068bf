#include "app/command_line/preference_text.h"
#include "app/command_line/velmo_program.h"
#include "store/sqlite_preferences.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

class DefaultsTest : public ::testing::Test {
protected:
    testing::Run defaults(const QStringList &words) const {
        return velmo.run(QStringList(u"defaults"_s) + words);
    }

    testing::VelmoProgram velmo;
};

} // namespace

TEST_F(DefaultsTest, WritesAndReadsEachKind) {
    const std::pair<QStringList, QByteArray> rows[] = {
        {{u"--string"_s, u"Blåbær\tog\nfløte"_s}, "Blåbær\tog\nfløte"},
        {{u"--string"_s, u"--help"_s}, "--help"},
        {{u"--string"_s, u""_s}, ""},
        {{u"--string"_s, u"\ufeffmerke"_s}, "\xef\xbb\xbfmerke"},
        {{u"--bool"_s, u"true"_s}, "true"},
        {{u"--bool"_s, u"false"_s}, "false"},
        {{u"--int"_s, u"-9223372036854775808"_s}, "-9223372036854775808"},
        {{u"--date"_s, u"2026-03-14T10:30:00.120+01:00"_s}, "2026-03-14T09:30:00.12Z"},
        {{u"--data"_s, u"AAH/"_s}, "AAH/"},
    };
    for (const auto &[words, text] : rows) {
        const auto written = defaults(QStringList{u"write"_s, u"key"_s} + words);
        EXPECT_EQ(written.status, 0) << written.error.toStdString();
        const auto read = defaults({u"read"_s, u"key"_s});
        EXPECT_EQ(read.status, 0);
        EXPECT_EQ(read.output, text + '\n');
    }
    // The application finds it where it looks.
    EXPECT_EQ(SqlitePreferences(velmo.configPath(u"velmo/preferences.sqlite"_s)).data(u"key"_s),
              QByteArray("\0\1\xff", 3));
}

TEST_F(DefaultsTest, ListsAndDeletes) {
    defaults({u"write"_s, u"velmoUser"_s, u"--data"_s, u"e30="_s});
    defaults({u"write"_s, u"a\tkey"_s, u"--string"_s, u"C:\\ny\nlinje\u001b"_s});
    EXPECT_EQ(defaults({u"list"_s}).output,
              "a\\tkey\tstring\tC:\\\\ny\\nlinje\\u001b\nvelmoUser\tdata\te30=\n");

    EXPECT_EQ(defaults({u"delete"_s, u"velmoUser"_s}).status, 0);
    EXPECT_EQ(defaults({u"delete"_s, u"velmoUser"_s}).status, 0);
    const auto read = defaults({u"read"_s, u"velmoUser"_s});
    EXPECT_EQ(read.status, 1);
    EXPECT_EQ(read.output, "");
    EXPECT_EQ(read.error, "velmo defaults: there is no value for 'velmoUser'\n");
}

TEST_F(DefaultsTest, NamesWhatIsOffAboutTheWords) {
    const std::pair<QStringList, QByteArray> rows[] = {
        {{}, "an action is missing: list, read, write or delete"},
        {{u"show"_s}, "unknown action 'show'"},
        {{u"--all"_s}, "unknown option '--all'"},
        {{u"list"_s, u"key"_s}, "unexpected argument 'key'"},
        {{u"read"_s}, "the key is missing"},
        {{u"read"_s, u"--json"_s}, "unknown option '--json'"},
        {{u"delete"_s, u"a"_s, u"b"_s}, "unexpected argument 'b'"},
        {{u"write"_s, u"key"_s},
         "the kind of the value is missing: --string, --bool, --int, --date or --data"},
        {{u"write"_s, u"key"_s, u"--float"_s, u"1"_s}, "unknown kind '--float'"},
        {{u"write"_s, u"key"_s, u"--string"_s}, "the value after --string is missing"},
        {{u"write"_s, u"key"_s, u"--string"_s, u"a"_s, u"b"_s}, "unexpected argument 'b'"},
        {{u"write"_s, u"key"_s, u"--bool"_s, u"yes"_s}, "'yes' is not true or false"},
        {{u"write"_s, u"key"_s, u"--int"_s, u"9223372036854775808"_s},
         "'9223372036854775808' is not a whole number of at most 64 bits"},
        {{u"write"_s, u"key"_s, u"--date"_s, u"2026-02-30T00:00:00Z"_s},
         "'2026-02-30T00:00:00Z' is not a moment such as 2026-03-14T09:30:00Z"},
        {{u"write"_s, u"key"_s, u"--data"_s, u"*"_s}, "'*' is not bytes in base64"},
    };
    for (const auto &[words, complaint] : rows) {
        const auto run = defaults(words);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.error, "velmo defaults: " + complaint + "\nTry 'velmo defaults --help'.\n");
        EXPECT_EQ(run.output, "");
    }
    for (const QStringList &words : {QStringList{u"--help"_s}, QStringList{u"write"_s, u"--help"_s}}) {
        EXPECT_EQ(defaults(words).status, 0);
        EXPECT_TRUE(defaults(words).output.startsWith("Usage: velmo defaults ACTION\n"));
    }
}

TEST(PreferenceText, IsParsedAgainByItsKind) {
    using namespace std::chrono_literals;
    for (const PreferenceValue &value :
         {PreferenceValue(Date(0ns)), PreferenceValue(Date(-1ns)),
          PreferenceValue(Date(1'773'480'600'123'456'789ns)), PreferenceValue(Date(8'999'999'999s)),
          PreferenceValue(QByteArray()), PreferenceValue(qint64(-1))})
        EXPECT_TRUE(kindOf(value).parse(textOf(value)) == value) << textOf(value).toStdString();
    EXPECT_EQ(preferenceKind(u"date")->parse(u"9999-12-31T00:00:00Z"_s), std::nullopt);
    EXPECT_EQ(preferenceKind(u"date")->parse(u"2026-03-14T09:30:00Z\n"_s), std::nullopt);
}

} // namespace velmo
