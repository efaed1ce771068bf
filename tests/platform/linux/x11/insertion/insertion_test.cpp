#include "platform/linux/x11/insertion/insertion_desktop.h"
#include "support/files.h"
#include "support/real_editor.h"

#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <gmock/gmock.h>
#include <random>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace velmo {

namespace {

const QString kText =
    u"Blåbærsyltetøy, «ja» – 👩‍👩‍👧 🇳🇴 e\u0301 𝔘\n\n\tny linje\n"_s;

// What programs offer beside contents.
const QByteArrayList kQuestions = {"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS"};

class Insertion : public testing::InsertionDesktop {
protected:
    /// What the program gets for the shortcut that it was sent.
    QString pasteByShortcut(testing::Puppet &puppet) {
        EXPECT_EQ(lineOf(puppet), "Ctrl+V");
        return pasteIn(puppet);
    }

    /// The formats that another program sees, each with its bytes.
    std::string offeredContents() {
        QByteArray contents;
        for (const QByteArray &format : paste("TARGETS").trimmed().split('\n')) {
            if (!kQuestions.contains(format))
                contents += format + ": " + paste(format.constData()).toHex() + '\n';
        }
        return contents.toStdString();
    }
};

// Real programs

class RealEditors : public Insertion, public ::testing::WithParamInterface<const char *> {};

TEST_P(RealEditors, GetTheTextExactly) {
    server.startWindowManager();
    testing::RealEditor editor(server, QString::fromLatin1(GetParam()));
    open();
    const auto owner = copy("kept");
    insert(kText);
    letInsertionEnd();
    EXPECT_EQ(paste(), "kept");
    EXPECT_TRUE(waitFor([&editor] { return editor.savedText() == kText; }))
        << editor.savedText().toStdString();
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_P(RealEditors, GetTheTextHoweverLate) {
    server.startWindowManager();
    testing::RealEditor editor(server, QString::fromLatin1(GetParam()));
    open();
    const auto owner = copy("kept");
    editor.program().signal(SIGSTOP);
    insert(kText);
    ASSERT_TRUE(waitFor([this] { return queue.pendingTimers() == 2; }));
    queue.advance(3s);
    settle();
    editor.program().signal(SIGCONT);
    EXPECT_TRUE(waitFor([this] { return queue.pendingTimers() == 0; }));
    settle();
    EXPECT_EQ(paste(), "kept");
    EXPECT_TRUE(waitFor([&editor] { return editor.savedText() == kText; }))
        << editor.savedText().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Insertion, RealEditors, ::testing::Values("mousepad", "featherpad"),
                         [](const auto &info) { return std::string(info.param); });

TEST_F(Insertion, PastesIntoATerminal) {
    server.startWindowManager();
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"typed"_s);
    const auto terminal =
        server.start(u"xterm"_s, {u"-u8"_s, u"-T"_s, u"terminal"_s, u"-e"_s, u"cat > "_s + path});
    focus(u"terminal"_s);
    ASSERT_TRUE(waitFor([&path] { return QFile::exists(path); }));
    open();
    const auto owner = copy("kept");
    const auto selection = copy("selected", "UTF8_STRING", "primary");
    insert(u"echo «blåbær» 😀\n"_s);
    letInsertionEnd();
    EXPECT_TRUE(waitFor([&path] { return testing::contentOf(path) == u"echo «blåbær» 😀\n"_s.toUtf8(); }));
    EXPECT_EQ(paste(), "kept");
    EXPECT_EQ(paste("UTF8_STRING", "primary"), "selected");
}

// What comes back

TEST_F(Insertion, GivesBackEveryFormatInOrder) {
    const auto program = openEditor();
    program->tell("offer");
    EXPECT_EQ(lineOf(*program), "offered");
    const std::string before = offeredContents();
    EXPECT_THAT(before, HasSubstr("text/html: "));
    EXPECT_THAT(before, HasSubstr("image/png: "));

    open();
    insert(kText);
    EXPECT_EQ(pasteByShortcut(*program), kText);
    letInsertionEnd();
    EXPECT_EQ(offeredContents(), before);
}

TEST_F(Insertion, GivesBackAPictureThatComesInPieces) {
    const auto target = openEditor();
    open();
    QByteArray picture(5'000'000, Qt::Uninitialized);
    std::minstd_rand random(1);
    std::generate(picture.begin(), picture.end(), [&random] { return static_cast<char>(random()); });
    const auto owner = copy(picture, "image/png");
    insert(kText);
    EXPECT_EQ(pasteByShortcut(*target), kText);
    letInsertionEnd();
    EXPECT_EQ(paste("image/png"), picture);
}

TEST_F(Insertion, DoesNotWaitForAFrozenOwner) {
    const auto target = openEditor();
    const auto owner = copy("kept");
    open(ClipboardSaveLimits{});
    owner->signal(SIGSTOP);
    insert(kText);
    EXPECT_EQ(pasteByShortcut(*target), kText);
    letInsertionEnd();
    EXPECT_EQ(paste(), "");
    EXPECT_THAT(
        log.lines(),
        ElementsAre(u"🎙️ [Insert] The clipboard could not be kept: its owner does not answer"_s));
}

// Who reads when

TEST_F(Insertion, NeverGivesASlowProgramTheOldContents) {
    const auto target = openEditor();
    open();
    const auto owner = copy("kept");
    std::mt19937 random(20); // NOLINT: the same delays every time
    std::uniform_int_distribution delay(0, 4000);
    for (int i = 0; i < 20; ++i) {
        const QString text = u"text %1"_s.arg(i);
        insert(text);
        EXPECT_EQ(lineOf(*target), "Ctrl+V");
        const std::chrono::milliseconds late(delay(random));
        queue.advance(late);
        settle();
        EXPECT_EQ(pasteIn(*target), text) << "after " << late.count() << " ms";
        queue.advance(std::max(400ms - late, 0ms));
        EXPECT_TRUE(waitFor([this] { return queue.pendingTimers() == 0; }));
        settle();
        EXPECT_EQ(paste(), "kept");
    }
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(Insertion, DoesNotTakeAClipboardManagerForTheTarget) {
    testing::Puppet manager(server, u"manager"_s);
    manager.tell("watch");
    EXPECT_EQ(lineOf(manager), "watches");
    const auto target = openEditor();
    open();
    const auto owner = copy("kept");
    insert(kText);
    EXPECT_EQ(lineOf(*target), "Ctrl+V");
    EXPECT_TRUE(waitFor([&] { return lineOf(manager) == kText.toUtf8().toBase64(); }));
    queue.advance(4s);
    settle();
    EXPECT_EQ(pasteIn(*target), kText);
}

} // namespace

} // namespace velmo
