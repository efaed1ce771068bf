#include "app/command_line/velmo_program.h"
#include "support/private_bus.h"
#include "support/wait_until.h"
#include "support/xvfb.h"

#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// What the application prints until it has started; all there is when it does not.
QByteArray outputUntilReady(QProcess &application) {
    QByteArray output;
    while (!output.contains("[Velmo Mac] Ready") && application.waitForReadyRead(60000))
        output += application.readAllStandardOutput();
    return output;
}

} // namespace

/// The desktop application on a display and a bus of its own, and the command line that speaks to it.
class DesktopCommandsTest : public ::testing::Test {
protected:
    DesktopCommandsTest() {
        program.setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        program.setEnvironment(u"DISPLAY"_s, display.display());
        application = program.start({});
        EXPECT_TRUE(bus.waitForName(u"com.tarnwell.velmo"_s));
    }

    /// Its exit status, and in `output` all it printed, faults that a sanitizer found among it.
    int statusAtEnd() {
        const bool hasEnded = application->waitForFinished(60000);
        output = application->readAllStandardOutput() + application->readAllStandardError();
        return hasEnded && application->exitStatus() == QProcess::NormalExit ? application->exitCode() : -1;
    }

    testing::PrivateBus bus;
    testing::Xvfb display;
    testing::VelmoProgram program;
    std::unique_ptr<QProcess> application;
    QByteArray output;
};

TEST_F(DesktopCommandsTest, AreCarriedOutByTheRunningApplication) {
    const std::tuple<QStringList, int, const char *, QStringList> rows[] = {
        {{u"status"_s}, 0, "idle\n", {}},
        {{u"stop"_s}, 1, "", {u"No recording runs."_s}},
        {{u"cancel"_s}, 1, "", {u"No recording runs."_s}},
        {{u"show"_s}, 0, "", {}},
        {{u"sync"_s}, 1, "", {u"Not signed in"_s}},
        {{u"sign-out"_s},
         1,
         "",
         {u"The keyring may still hold your session: This session has no keyring."_s}},
        {{u"velmo://auth?id_token=secret"_s}, 0, "", {}},
        {{}, 0, "", {}}, // a second start
    };
    for (const auto &[words, status, output, messages] : rows) {
        const auto run = program.run(words);
        EXPECT_EQ(run.status, status) << words.join(u' ').toStdString() << run.error.toStdString();
        EXPECT_EQ(run.output.toStdString(), output) << words.join(u' ').toStdString();
        EXPECT_EQ(run.messages(), messages) << words.join(u' ').toStdString();
    }
    // There is no sound server, and the application says so to whoever asked.
    for (const QString &word : {u"start"_s, u"toggle"_s, u"toggle"_s}) {
        const auto start = program.run({word});
        EXPECT_EQ(start.status, 1);
        EXPECT_TRUE(start.messages().value(0).startsWith(u"Failed to start recording: "_s))
            << start.error.toStdString();
    }

    EXPECT_EQ(program.run({u"quit"_s}).status, 0);
    EXPECT_EQ(statusAtEnd(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains("🔑 [Auth] Ignored a callback that nobody waits for\n"))
        << output.toStdString();
    EXPECT_FALSE(output.contains("secret"));
    EXPECT_TRUE(output.contains("[Velmo Mac] Emoji picker restored")) << output.toStdString();
    EXPECT_EQ(program.run({u"status"_s}).status, 3);
}

TEST_F(DesktopCommandsTest, EndInOrderOnATerminationSignal) {
    ::kill(static_cast<pid_t>(application->processId()), SIGTERM);
    EXPECT_EQ(statusAtEnd(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains("[Velmo Mac] Emoji picker restored")) << output.toStdString();
}

// Another application that holds a key keeps it from the next: what the next start says shows that none is held.
TEST_F(DesktopCommandsTest, LeaveKeysAndNameFreeHoweverTheApplicationEnds) {
    for (const int signal : {SIGKILL, SIGSEGV, SIGHUP}) {
        ::kill(static_cast<pid_t>(application->processId()), signal);
        EXPECT_TRUE(application->waitForFinished(60000));
        EXPECT_TRUE(testing::waitUntil([this] { return program.run({u"status"_s}).status == 3; })) << signal;
        application = program.start({});
        output = outputUntilReady(*application);
        EXPECT_TRUE(output.contains("bare Fn suppression enabled")) << signal << output.toStdString();
        EXPECT_TRUE(output.contains("Fallback hotkey registered")) << signal << output.toStdString();
        EXPECT_TRUE(output.contains("[Velmo Mac] Ready")) << signal << output.toStdString();
    }
}

TEST(DesktopApplication, RunsWithoutABus) {
    const testing::Xvfb display;
    testing::VelmoProgram program;
    program.setEnvironment(u"DISPLAY"_s, display.display());
    const auto application = program.start({});
    const QByteArray output = outputUntilReady(*application);
    EXPECT_TRUE(output.contains("[Velmo Mac] Ready")) << output.toStdString();
    EXPECT_EQ(program.run({u"status"_s}).status, 3); // where nobody can be found
    ::kill(static_cast<pid_t>(application->processId()), SIGTERM);
    EXPECT_TRUE(application->waitForFinished(60000));
    EXPECT_EQ(application->exitCode(), 0) << application->readAllStandardError().toStdString();
}

} // namespace velmo
