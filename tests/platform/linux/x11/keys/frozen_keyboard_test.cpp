#include "platform/linux/x11/key_stage.h"
#include "support/files.h"
#include "support/xvfb.h"

#include <QDir>
#include <QFile>
#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using testing::waitUntil;
namespace key = testing::key;

/// Velmo's hold on the keyboard in a process of its own, which can be stopped and killed.
class FrozenKeyboardTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(waitUntil([this] { return isHidden(); }));
    }

    /// Types the trigger key and a letter, and looks at what the application sees before that letter.
    bool isHidden() {
        application.forget();
        hands.tap(key::rightControl);
        typeLetter();
        return application.seen() == QStringList({u"+53"_s, u"-53"_s});
    }

    /// Types a letter and waits until the application has it.
    void typeLetter() {
        hands.tap(key::letterX);
        EXPECT_TRUE(waitUntil([this] { return application.seen().contains(u"-53"); }))
            << "the keyboard is frozen";
    }

    void stopProgram() { program->signal(SIGSTOP); }
    void continueProgram() { program->signal(SIGCONT); }

    /// Waits for the program to say it, after what it has said before.
    void expectWord(const QByteArray &word) {
        QByteArray said;
        EXPECT_TRUE(waitUntil([&] {
            said += program->process().readAllStandardOutput();
            return said.endsWith(word + '\n');
        })) << said.constData();
    }

    /// "pid (name) state parent …"; empty when there is no such process.
    [[nodiscard]] static QByteArray stateOf(qint64 process) {
        return testing::contentOf(u"/proc/%1/stat"_s.arg(process));
    }

    /// The guard of the program, as a process; 0 when there is none.
    [[nodiscard]] qint64 guardProcess() {
        const QByteArray parent = ' ' + QByteArray::number(program->process().processId()) + ' ';
        for (const QString &entry : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
            const QByteArray state = stateOf(entry.toLongLong());
            if (state.contains("(key-guard)") && state.contains(parent))
                return entry.toLongLong();
        }
        return 0;
    }

    testing::Xvfb server;
    testing::Hands hands{server.display()};
    testing::OtherApplication application{server.display()};
    std::unique_ptr<testing::DisplayProgram> program =
        server.start(QStringLiteral(VELMO_TRIGGER_PROGRAM), {QStringLiteral(VELMO_KEY_GUARD)});
};

TEST_F(FrozenKeyboardTest, ThawsWhileVelmoIsStoppedAndVelmoTakesTheKeyAgain) {
    stopProgram();
    application.forget();
    hands.press(key::rightControl); // the server asks, and nobody answers
    hands.release(key::rightControl);
    typeLetter();

    continueProgram();
    EXPECT_TRUE(waitUntil([this] { return isHidden(); }));
}

TEST_F(FrozenKeyboardTest, ThawsWhenVelmoIsStoppedWithTheKeyHeld) {
    hands.press(key::rightControl);
    expectWord("down");
    stopProgram();
    application.forget();
    typeLetter();
    hands.release(key::rightControl);

    continueProgram();
    expectWord("up"); // the release is reported all the same
    EXPECT_TRUE(waitUntil([this] { return isHidden(); }));
}

TEST_F(FrozenKeyboardTest, ThawsAtOnceWhenVelmoIsKilledAndLeavesNoGuardBehind) {
    const qint64 guard = guardProcess();
    ASSERT_NE(guard, 0);
    stopProgram();
    application.forget();
    hands.press(key::rightControl); // frozen
    program->signal(SIGKILL);
    typeLetter();
    hands.release(key::rightControl);
    EXPECT_TRUE(waitUntil([&] {
        const QByteArray state = stateOf(guard);
        return state.isEmpty() || state.contains(") Z "); // gone, or waiting for its new parent to notice
    }));
}

} // namespace

} // namespace velmo
