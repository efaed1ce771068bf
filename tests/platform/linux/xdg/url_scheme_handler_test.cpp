#include "platform/linux/xdg/url_scheme_handler.h"

#include "support/files.h"
#include "support/wait_until.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using testing::contentOf;

/// Whether the program says that all is well; waits for it.
std::optional<bool> outcomeOf(const QString &program, const QStringList &arguments) {
    std::optional<bool> outcome;
    const DetachedProcess process(program, arguments, [&](bool succeeded) { outcome = succeeded; });
    EXPECT_TRUE(testing::waitUntil([&] { return outcome.has_value(); }));
    return outcome;
}

} // namespace

class UrlSchemeHandlerTest : public ::testing::Test {
protected:
    UrlSchemeHandlerTest() {
        qputenv("HOME", home.path().toUtf8());
        qputenv("XDG_DATA_HOME", home.filePath(u"data"_s).toUtf8());
        qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
        qputenv("XDG_DATA_DIRS", home.filePath(u"system"_s).toUtf8());
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    const QTemporaryDir home;
    const QString entry = home.filePath(u"data/applications/velmo.desktop"_s);
};

TEST_F(UrlSchemeHandlerTest, MakesTheDesktopOpenAddressesWithTheProgram) {
    // A program whose path holds what is special in a desktop file (but no percent sign, which GLib does not take), and
    // which notes what it was started with.
    const QString folder = home.filePath(u"a \"$`\\ b"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString program = folder + u"/velmo"_s;
    testing::writeScript(program,
                         "printf %s \"$1\" >\"$HOME/noted~\"\nmv \"$HOME/noted~\" \"$HOME/noted\"\n");

    UrlSchemeHandler handler;
    ASSERT_TRUE(handler.install(program));
    EXPECT_EQ(outcomeOf(u"desktop-file-validate"_s, {entry}), true);
    ASSERT_TRUE(testing::waitUntil([&] {
        return contentOf(home.filePath(u"config/mimeapps.list"_s)).contains("x-scheme-handler/velmo");
    }));
    const QString address = u"velmo://auth?id_token=a%20b&state='c'"_s;
    EXPECT_EQ(outcomeOf(u"gio"_s, {u"open"_s, address}), true);
    EXPECT_TRUE(testing::waitUntil([&] { return QFile::exists(home.filePath(u"noted"_s)); }));
    EXPECT_EQ(contentOf(home.filePath(u"noted"_s)), address.toUtf8());
}

TEST(DesktopEntry, QuotesTheProgramOnlyWhereItMust) {
    EXPECT_TRUE(
        desktopEntry(u"/opt/Velmo-1.0/bin/velmo"_s).contains(u"\nExec=/opt/Velmo-1.0/bin/velmo %u\n"_s));
    EXPECT_TRUE(
        desktopEntry(u"/home/åse/my tools/velmo"_s).contains(u"\nExec=\"/home/åse/my tools/velmo\" %u\n"_s));
}

TEST_F(UrlSchemeHandlerTest, LeavesTheEntryOfAPackageInPlace) {
    ASSERT_TRUE(QDir().mkpath(home.filePath(u"system/applications"_s)));
    testing::writeFile(home.filePath(u"system/applications/velmo.desktop"_s));
    UrlSchemeHandler handler;
    EXPECT_TRUE(handler.install(u"/opt/velmo"_s));
    EXPECT_FALSE(QFile::exists(entry));
}

TEST_F(UrlSchemeHandlerTest, SaysWhenTheEntryCannotBeWritten) {
    testing::writeFile(home.filePath(u"data"_s)); // a file where a folder belongs
    UrlSchemeHandler handler;
    const auto outcome = handler.install(u"/opt/velmo"_s);
    ASSERT_FALSE(outcome);
    EXPECT_TRUE(outcome.error().startsWith(u"Could not write "_s + entry)) << outcome.error().toStdString();
}

TEST(DetachedProcess, SaysHowItEndedAndInheritsNoSignals) {
    EXPECT_EQ(outcomeOf(u"true"_s, {}), true);
    EXPECT_EQ(outcomeOf(u"false"_s, {}), false);
    EXPECT_EQ(outcomeOf(u"no-such-program"_s, {}), false);
    sigset_t terminating;
    sigset_t before;
    sigemptyset(&terminating);
    sigaddset(&terminating, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &terminating, &before);
    EXPECT_EQ(outcomeOf(u"sh"_s, {u"-c"_s, u"kill -TERM $$; exit 0"_s}), false);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace velmo
