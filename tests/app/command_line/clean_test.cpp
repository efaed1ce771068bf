#include "app/command_line/velmo_program.h"
#include "support/qt_printing.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace velmo {

using namespace Qt::StringLiterals;

class CleanTest : public ::testing::Test {
protected:
    testing::Run clean(const QStringList &options, const QByteArray &input) const {
        return velmo.run(QStringList(u"clean"_s) + options, input);
    }

    testing::VelmoProgram velmo;
};

TEST_F(CleanTest, CleansAllOfStandardInput) {
    const auto run = clean({u"--detected"_s, u"no"_s}, "  hei ny linje eh\nikkje det \xff\0"_ba + '\n');
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, QByteArray("Hei\nIkke det \xef\xbf\xbd", 16) + '\0' + '\n');
    EXPECT_EQ(run.error, "");
}

TEST_F(CleanTest, AnswersEachLine) {
    const auto run = clean(
        {u"--jsonl"_s},
        R"({"prefs":{"velmoSelectedLanguages":"en"},"detected":null,"text":"i think"})"
        "\n"
        R"({"prefs":{"velmoSmartFormatting":true,"velmo_previous_fn_usage":2.0},"text":"\ud800 \u0000"})"
        "\nno object\n"
        R"({"prefs":{"x":1.5},"text":""})"
        "\n\n"
        R"({"prefs":3,"text":""})"
        "\n"
        R"({"detected":1,"text":""})"
        "\n"
        R"({"text":1})"
        "\n"
        R"({"prefs":{"velmoSelectedLanguages":"no"},"detected":"en","text":"i think"})");
    EXPECT_EQ(run.status, 1);
    const auto lines = run.output.split('\n');
    ASSERT_EQ(lines.size(), 10);
    EXPECT_EQ(lines[0], R"({"text":"I think"})");
    EXPECT_EQ(lines[1], "{\"text\":\"\xef\xbf\xbd \\u0000\"}");
    for (int line = 2; line < 8; ++line)
        EXPECT_TRUE(lines[line].startsWith(R"({"error":")")) << lines[line].toStdString();
    EXPECT_EQ(lines[8], R"({"text":"I think"})");
    EXPECT_EQ(lines[9], "");
}

TEST_F(CleanTest, UsesTheStoredPreferencesWhereALineHasNone) {
    const auto stored =
        velmo.run({u"defaults"_s, u"write"_s, u"velmoSelectedLanguages"_s, u"--string"_s, u"no"_s});
    EXPECT_EQ(stored.status, 0);
    EXPECT_EQ(clean({u"--jsonl"_s}, R"({"text":"hei komma um"})").output, "{\"text\":\"Hei, um\"}\n");
    EXPECT_EQ(clean({}, "hei komma um").output, "Hei, um\n");
}

TEST_F(CleanTest, TracesEachPassOnALine) {
    const auto run = clean({u"--trace"_s}, "eh hei ny linje du");
    EXPECT_EQ(run.output, "Hei\nDu\n");
    EXPECT_TRUE(run.error.contains("\nfillers:   hei \\u2028 du\n")) << run.error.toStdString();
    EXPECT_TRUE(run.error.endsWith("\nsnippets: Hei\\nDu\n")) << run.error.toStdString();
}

TEST_F(CleanTest, RefusesWordsThatAreOff) {
    EXPECT_EQ(clean({u"--bogus"_s}, {}).status, 2);
    EXPECT_EQ(clean({u"file.txt"_s}, {}).status, 2);
    EXPECT_EQ(clean({u"--jsonl"_s, u"--detected"_s, u"no"_s}, {}).status, 2);
}

TEST_F(CleanTest, SurvivesAClosedPipe) {
    QProcess shell;
    shell.start(u"sh"_s, {u"-c"_s, u"yes '{\"text\":\"hei\"}' | \"%1\" clean --jsonl | head -n 1"_s.arg(
                                       QStringLiteral(VELMO_PROGRAM))});
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.readAllStandardOutput(), "{\"text\":\"Hei\"}\n");
    EXPECT_EQ(shell.readAllStandardError(), "");
}

} // namespace velmo
