#include "flow/desk_test.h"

#include "support/files.h"
#include "support/qt_printing.h"
#include "support/screen_saver.h"
#include "support/scripted_server.h"

#include <QFile>
#include <algorithm>
#include <csignal>
#include <random>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace velmo {

namespace {

namespace key = testing::key;

const QByteArray kTranscribe = "/api/transcribe";

/// Dictations of which the service always hears what the test says.
class DictationTest : public testing::DeskTest {
protected:
    DictationTest() { startVelmo(service.origin()); }

    void hears(const QStringList &texts) {
        std::deque<testing::Reaction> reactions;
        for (const QString &text : texts)
            reactions.push_back(testing::reply(200, "{\"text\":\"" + text.toUtf8() + "\"}"));
        service.react(kTranscribe, std::move(reactions));
    }

    static void letPass(std::chrono::milliseconds time,
                        std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now()) {
        EXPECT_TRUE(testing::waitUntil([&] { return std::chrono::steady_clock::now() - start >= time; }));
    }

    /// Holds the trigger key for a recording that is long enough.
    void beginPushToTalk() {
        desk->hands.press(key::rightControl);
        EXPECT_TRUE(velmo->says("[Flow] Recording started"));
        letPass(400ms);
    }
    void dictate() {
        beginPushToTalk();
        desk->hands.release(key::rightControl);
    }

    void type(int letters) {
        for (int i = 0; i < letters; ++i)
            desk->hands.tap(key::letterX);
    }

    /// What another program gets when it asks the clipboard for this.
    [[nodiscard]] QByteArray paste(const char *type) {
        return desk->display
            .start(u"xclip"_s,
                   {u"-out"_s, u"-selection"_s, u"clipboard"_s, u"-target"_s, QString::fromLatin1(type)})
            ->outputUntilEnd();
    }

    static QByteArray lineOf(testing::DisplayProgram &program) {
        EXPECT_TRUE(testing::waitUntil([&] { return program.process().canReadLine(); }));
        return program.process().readLine().trimmed();
    }

    testing::ScriptedServer service;
};

TEST_F(DictationTest, TwoInQuickSuccessionReachATerminalAndTheClipboardComesBack) {
    const QTemporaryDir directory;
    const QString typed = directory.filePath(u"typed"_s);
    const auto owner = desk->display.start(QStringLiteral(VELMO_PUPPET), {u"owner"_s});
    owner->process().write("offer\n");
    ASSERT_TRUE(testing::waitUntil([&] { return !paste("image/png").isEmpty(); }));
    const QByteArray picture = paste("image/png");
    const auto terminal = desk->startWindow(
        u"terminal"_s, u"xterm"_s,
        {u"-u8"_s, u"-T"_s, u"terminal"_s, u"-e"_s, u"stty -icanon -echo && cat > "_s + typed});
    ASSERT_TRUE(testing::waitUntil([&] { return QFile::exists(typed); }));

    hears({u"Vi møtes klokka ti."_s, u"Ses vi på lørdag?"_s});
    dictate();
    dictate();
    EXPECT_TRUE(testing::waitUntil(
        [&] { return testing::contentOf(typed) == u"Vi møtes klokka ti.Ses vi på lørdag?"_s.toUtf8(); }));
    EXPECT_TRUE(testing::waitUntil([&] { return paste("image/png") == picture; }));
    EXPECT_EQ(QString::fromUtf8(paste("text/html")), u"<b>blåbær</b>"_s);
    EXPECT_EQ(QString::fromUtf8(paste("UTF8_STRING")), u"blåbær"_s);
}

TEST_F(DictationTest, ASlowReaderNeverGetsTheOldClipboard) {
    // The long form is for when nobody waits for it, and the machine does nothing else: Velmo waits for five seconds.
    const bool isLong = qEnvironmentVariableIsSet("VELMO_LONG_TESTS");
    const int count = isLong ? 200 : 3;
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts.append(u"Tekst %1."_s.arg(i));
    hears(texts);
    const auto owner = desk->display.start(QStringLiteral(VELMO_PUPPET), {u"owner"_s});
    owner->process().write("offer\n");
    const auto reader = desk->startWindow(u"reader"_s, QStringLiteral(VELMO_PUPPET), {u"reader"_s});
    std::mt19937 random(200); // NOLINT: the same delays every time
    std::uniform_int_distribution delay(500, isLong ? 4000 : 2500);
    for (const QString &text : texts) {
        ASSERT_TRUE(testing::waitUntil([this] { return paste("UTF8_STRING") == "blåbær"; }));
        dictate();
        const auto dictated = std::chrono::steady_clock::now();
        EXPECT_EQ(lineOf(*reader), "Ctrl+V");
        const std::chrono::milliseconds late(delay(random));
        letPass(late, dictated);
        reader->process().write("read\n");
        EXPECT_EQ(QString::fromUtf8(QByteArray::fromBase64(lineOf(*reader))), text)
            << "after " << late.count() << " ms";
    }
}

TEST_F(DictationTest, CancelledLeavesNothingAndTheNextPressWorks) {
    testing::RealEditor editor(desk->display, u"mousepad"_s);
    hears({u"Neste gang går det bedre."_s});
    beginPushToTalk();
    velmo->command(u"cancel"_s);
    EXPECT_TRUE(velmo->says("[Flow] Recording cancelled by user"));
    EXPECT_EQ(recordingFiles(), QStringList());
    desk->hands.release(key::rightControl);
    EXPECT_TRUE(std::ranges::none_of(service.requests(),
                                     [](const auto &request) { return request.path == kTranscribe; }));

    dictate();
    expectText(editor, u"Neste gang går det bedre."_s);
}

TEST_F(DictationTest, CombinationsOfTheTriggerKeyReachTheEditorAndAreNoDictation) {
    testing::RealEditor editor(desk->display, u"mousepad"_s);
    type(2);
    desk->hands.chord({key::rightControl, key::letterA});
    desk->hands.chord({key::rightControl, key::letterC});
    EXPECT_TRUE(testing::waitUntil([this] { return paste("UTF8_STRING") == "xx"; }));
    EXPECT_EQ(recordingFiles(), QStringList());
    velmo->command(u"start"_s); // nothing else runs
    velmo->command(u"cancel"_s);
}

TEST_F(DictationTest, TypingGoesOnWhileVelmoIsStoppedAndWhenItIsKilled) {
    testing::RealEditor editor(desk->display, u"mousepad"_s);
    hears({u"Og videre."_s});
    velmo->signal(SIGSTOP);
    desk->hands.tap(key::rightControl); // the server waits for Velmo's answer
    type(1);
    expectText(editor, u"x"_s);

    velmo->signal(SIGCONT);
    EXPECT_TRUE(velmo->says("[Hotkey] Trigger key was let go"));
    dictate();
    expectText(editor, u"xOg videre."_s);

    beginPushToTalk();
    velmo->kill();
    desk->hands.release(key::rightControl);
    type(1);
    expectText(editor, u"xOg videre.x"_s);
    EXPECT_EQ(recordingFiles().size(), 1);
    startVelmo(service.origin()); // which clears up
}

TEST_F(DictationTest, GoesOnToTheClipboardAloneWhenTheScreenIsLocked) {
    testing::RealEditor editor(desk->display, u"mousepad"_s);
    hears({u"Dette blir liggende."_s, u"Og dette skrives inn."_s});
    testing::ScreenSaver screenSaver(desk->bus);
    beginPushToTalk();
    screenSaver.setActive(true);
    EXPECT_TRUE(velmo->says("[Flow] Recording stopped"));
    desk->hands.release(key::rightControl);
    EXPECT_TRUE(testing::waitUntil([this] { return paste("UTF8_STRING") == "Dette blir liggende."; }));
    EXPECT_FALSE(editor.isChanged());

    screenSaver.setActive(false);
    velmo->command(u"status"_s); // it has heard of that by now
    dictate();
    expectText(editor, u"Og dette skrives inn."_s);
}

TEST_F(DictationTest, FollowsAChangeOfTheLayout) {
    testing::RealEditor editor(desk->display, u"featherpad"_s);
    hears({u"Nå skriver vi på et annet tastatur."_s});
    const auto setLayout = [](const QString &layout) {
        EXPECT_EQ(desk->display.start(u"setxkbmap"_s, {layout})->outputUntilEnd(), "");
    };
    setLayout(u"dvorak"_s); // "v" is elsewhere
    dictate();
    expectText(editor, u"Nå skriver vi på et annet tastatur."_s);
    setLayout(u"us"_s);
}

} // namespace

} // namespace velmo
