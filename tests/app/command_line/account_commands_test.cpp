#include "app/command_line/velmo_program.h"
#include "app/process/arguments.h"
#include "store/history_entry.h"
#include "store/preference_keys.h"
#include "support/private_bus.h"
#include "support/private_keyring.h"
#include "support/scripted_server.h"

#include <QUrl>
#include <QUrlQuery>
#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

Date at(qint64 secondsOfTheEpoch) {
    return Date(std::chrono::seconds(secondsOfTheEpoch));
}

/// A line of the process's output, waited for.
QString lineOf(QProcess &process) {
    while (!process.canReadLine() && process.waitForReadyRead()) {
    }
    return QString::fromUtf8(process.readLine()).trimmed();
}

int statusOf(QProcess &process) {
    return process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit ? process.exitCode()
                                                                                          : -1;
}

} // namespace

TEST(HistoryCommand, PrintsTheNewestFirstInBothForms) {
    testing::VelmoProgram program;
    program.setEnvironment(u"TZ"_s, u"Europe/Oslo"_s);
    EXPECT_EQ(program.run({u"history"_s, u"--json"_s}).output, "[]\n");
    const QList<Entry> entries = {
        {u"B"_s, u"to\nlinjer\x1b"_s, at(1774746000), 4.5}, // the clocks go forward between
        {u"A"_s, u"én"_s, at(1774742400), std::nullopt}};
    ASSERT_EQ(program
                  .run({u"defaults"_s, u"write"_s, QString(keys::transcriptionHistory), u"--data"_s,
                        QString::fromLatin1(encodeEntries(entries)->toBase64())})
                  .status,
              0);
    const std::tuple<const char *, QStringList, int, const char *> rows[] = {
        {"text", {}, 0, "2026-03-29 03:00  to\n                  linjer\\u001b\n2026-03-29 01:00  én\n"},
        {"limited", {u"--limit"_s, u"1"_s}, 0, "2026-03-29 03:00  to\n                  linjer\\u001b\n"},
        {"JSON",
         {u"--json"_s, u"--limit=2"_s},
         0,
         R"([{"durationSeconds":4.5,"id":"B","text":"to\nlinjer\u001b","timestamp":"2026-03-29T01:00:00.000Z"},)"
         R"({"id":"A","text":"én","timestamp":"2026-03-29T00:00:00.000Z"}])"
         "\n"},
        {"none", {u"--limit"_s, u"0"_s}, 0, ""},
        {"no number", {u"--limit"_s, u"-1"_s}, 2, ""},
        {"an operand", {u"all"_s}, 2, ""},
    };
    for (const auto &[name, options, status, output] : rows) {
        const auto run = program.run(QStringList{u"history"_s} + options);
        EXPECT_EQ(run.status, status) << name;
        EXPECT_EQ(run.output.toStdString(), output) << name;
    }
}

TEST(RemoteCommands, SayThatNoApplicationRuns) {
    const testing::PrivateBus bus;
    testing::VelmoProgram program;
    for (const bool hasBus : {false, true}) {
        if (hasBus)
            program.setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        for (const QString &word : {u"toggle"_s, u"status"_s, u"quit"_s, u"velmo://auth?id_token=x"_s}) {
            const auto run = program.run({word});
            EXPECT_EQ(run.status, 3) << word.toStdString();
            EXPECT_TRUE(run.messages().value(0).startsWith(u"Velmo is not running"_s))
                << run.error.toStdString();
            EXPECT_EQ(run.output, "");
        }
    }
    EXPECT_EQ(program.run({u"toggle"_s, u"now"_s}).status, 2);
}

TEST(Arguments, WipesWhatAnAddressOfOursCarries) {
    char program[] = "velmo";
    char word[] = "x:velmo:y";
    char address[] = "Velmo://auth?id_token=å";
    char *argv[] = {program, word, address, nullptr};
    EXPECT_EQ(takeArguments(3, argv), QStringList({u"x:velmo:y"_s, u"Velmo://auth?id_token=å"_s}));
    EXPECT_STREQ(word, "x:velmo:y");
    EXPECT_STREQ(address, "Velmo:..................");
}

class AccountCommandsTest : public ::testing::Test {
protected:
    AccountCommandsTest() {
        program.setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        program.setEnvironment(u"VELMO_SERVICE_URL"_s, server.origin());
        program.setEnvironment(u"BROWSER"_s, u"false"_s);
        server.answer("/api/auth/apple", 200,
                      R"({"token":"secret-token","user":{"id":"u1","email":"k@example.no"}})");
        server.answer("/api/auth/me", 200, "{}");
        server.answer("/api/sync/dictionary", 200, R"({"words":["Bodø"]})");
        server.answer("/api/sync/snippets", 200, "{}");
        server.answer("/api/sync/stats", 200, "{}");
    }

    testing::PrivateBus bus;
    testing::PrivateKeyring keyring{bus};
    testing::ScriptedServer server;
    testing::VelmoProgram program;
};

TEST_F(AccountCommandsTest, SignInSynchroniseAndSignOut) {
    EXPECT_EQ(program.run({u"sync"_s}).messages(), QStringList{u"Not signed in"_s});
    const auto signIn = program.start({u"sign-in"_s});
    const QUrl page(lineOf(*signIn));
    EXPECT_EQ(page.path(), u"/auth/authorize"_s);
    const QString state = QUrlQuery(page).queryItemValue(u"state"_s);
    const auto handed = program.run({u"velmo://auth?id_token=secret-id&state="_s + state});
    EXPECT_EQ(handed.status, 0);
    EXPECT_EQ(statusOf(*signIn), 0);
    EXPECT_EQ(signIn->readAllStandardOutput(), "Signed in as k@example.no\n");
    const QByteArray messages = signIn->readAllStandardError() + handed.error;
    EXPECT_FALSE(messages.contains("secret")) << messages.toStdString();
    EXPECT_TRUE(messages.contains("[Sync] Dictionary pushed 1 words")) << messages.toStdString();
    EXPECT_EQ(testing::PrivateKeyring::secretTool(
                  {u"lookup"_s, u"account"_s, u"com.tarnwell.velmo.mac.authToken"_s}),
              u"secret-token"_s);

    const auto sync = program.run({u"sync"_s});
    EXPECT_EQ(sync.status, 0) << sync.error.toStdString();
    server.answer("/api/sync/stats", 500, "");
    const auto failed = program.run({u"sync"_s});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.messages(), QStringList{u"Not everything could be synchronised."_s});

    EXPECT_EQ(program.run({u"sign-out"_s}).status, 0);
    EXPECT_EQ(program.run({u"sync"_s}).status, 1);
}

TEST_F(AccountCommandsTest, TellHowASignInEnded) {
    server.answer("/api/auth/apple", 500, "");
    const auto refused = program.start({u"sign-in"_s});
    static_cast<void>(lineOf(*refused));
    EXPECT_EQ(program.run({u"sign-in"_s}).messages(),
              QStringList{u"Another 'velmo sign-in' is under way."_s});
    EXPECT_EQ(program.run({u"velmo://auth?id_token=id"_s}).status, 0);
    EXPECT_EQ(statusOf(*refused), 1);
    EXPECT_TRUE(
        refused->readAllStandardError().contains("Sign-in failed (server error 500). Please try again.\n"));

    const auto givenUp = program.start({u"sign-in"_s});
    static_cast<void>(lineOf(*givenUp));
    ::kill(static_cast<pid_t>(givenUp->processId()), SIGINT);
    EXPECT_EQ(statusOf(*givenUp), 1);
    EXPECT_TRUE(givenUp->readAllStandardError().contains("The sign-in was given up.\n"));
}

TEST_F(AccountCommandsTest, SayWhatAKeyringThatRefusesMeans) {
    const auto signIn = [this] {
        const auto process = program.start({u"sign-in"_s});
        static_cast<void>(lineOf(*process));
        EXPECT_EQ(program.run({u"velmo://auth?id_token=id"_s}).status, 0);
        EXPECT_EQ(statusOf(*process), 0);
        return process->readAllStandardError();
    };
    const QByteArray warning = "You will have to sign in again: The keyring is locked.\n";
    EXPECT_FALSE(signIn().contains(warning));
    keyring.lock();
    EXPECT_TRUE(signIn().contains(warning));
    const auto signOut = program.run({u"sign-out"_s});
    EXPECT_EQ(signOut.status, 1);
    EXPECT_EQ(signOut.messages(),
              QStringList{u"The keyring may still hold your session: The keyring is locked."_s});
    keyring.stop();
    EXPECT_EQ(program.run({u"sync"_s}).messages(), QStringList{u"Not signed in"_s}); // nor does it wait long
}

} // namespace velmo
