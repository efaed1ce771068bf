#include "dictation/insertion/text_inserter.h"

#include "dictation/insertion/insertion_fakes.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace velmo {

namespace {

constexpr auto kTarget = DisplayClient{7};
constexpr auto kClipboardManager = DisplayClient{8};

class TextInserterTest : public ::testing::Test {
protected:
    TextInserterTest() { clipboard.held = {plainText("kept"), {u"text/html"_s, "<b>kept</b>"}}; }

    static ClipboardItem plainText(const char *text) { return testing::plain(QString::fromUtf8(text)); }

    void insert(const char *text) {
        inserter.insert(QString::fromUtf8(text));
        queue.runPosted();
    }
    void readBy(DisplayClient client) {
        clipboard.readBy(client);
        queue.runPosted();
    }
    void advance(std::chrono::nanoseconds time) {
        queue.advance(time);
        queue.runPosted();
    }
    [[nodiscard]] QString text() const { return clipboard.text(); }

    testing::LogCapture log;
    testing::ManualMainQueue queue;
    testing::FakeClipboard clipboard{queue};
    testing::FakeClipboard primary{queue};
    testing::FakeKeyInjector keys{queue};
    testing::FakeFocus focus{queue};
    testing::FakeSessionLock lock;
    TextInserter inserter{{queue, clipboard, primary, keys, focus, lock}};
};

TEST_F(TextInserterTest, PastesTheTextAndGivesTheClipboardBack) {
    const auto before = clipboard.held;
    insert("Hei på deg");
    EXPECT_EQ(text(), u"Hei på deg"_s);
    EXPECT_THAT(keys.pressed, ElementsAre(PasteShortcut::ControlV));
    EXPECT_EQ(primary.saves, 0);

    readBy(kTarget);
    advance(400ms);
    EXPECT_EQ(clipboard.held, before);
    EXPECT_EQ(queue.pendingTimers(), 0u);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(TextInserterTest, ClearsAClipboardThatWasEmpty) {
    clipboard.held.clear();
    insert("text");
    readBy(kTarget);
    advance(400ms);
    EXPECT_THAT(clipboard.held, IsEmpty());
}

TEST_F(TextInserterTest, GivesTheClipboardBackAfterTheTargetHasReadTheText) {
    struct Row {
        const char *name;
        std::chrono::milliseconds read; ///< When the reader has the text, after the paste.
        DisplayClient reader;
        std::chrono::milliseconds restored; ///< The first moment at which the old contents are back.
    };
    const Row rows[] = {{"at once", 0ms, kTarget, 400ms},
                        {"just in time", 399ms, kTarget, 400ms},
                        {"just after", 401ms, kTarget, 401ms},
                        {"late", 4999ms, kTarget, 4999ms},
                        {"never", 6000ms, kTarget, 5000ms},
                        {"a clipboard manager", 0ms, kClipboardManager, 5000ms},
                        {"a clipboard manager, late", 2000ms, kClipboardManager, 5000ms}};
    for (const Row &row : rows) {
        insert("dictated");
        const auto reading = queue.after(row.read, [this, &row] { clipboard.readBy(row.reader); });
        advance(row.restored - 1ns);
        EXPECT_EQ(text(), u"dictated"_s) << row.name;
        advance(1ns);
        EXPECT_EQ(text(), u"kept"_s) << row.name;
    }
}

TEST_F(TextInserterTest, DoesNotTakeAReadingBeforeThePasteForThePaste) {
    insert("the target of the last one counts neither");
    readBy(kTarget);
    advance(400ms);
    clipboard.watcher = kTarget;
    insert("dictated");
    advance(4999ms);
    EXPECT_EQ(text(), u"dictated"_s);
    advance(1ms);
    EXPECT_EQ(text(), u"kept"_s);
    EXPECT_THAT(log.lines(), ElementsAre(u"🎙️ [Insert] The focused window has not read the text"_s));
}

TEST_F(TextInserterTest, LeavesACopyMadeInBetweenAlone) {
    insert("dictated");
    clipboard.somebodyCopies(u"copied"_s);
    advance(10s);
    EXPECT_EQ(text(), u"copied"_s);
    EXPECT_EQ(queue.pendingTimers(), 0u);
}

TEST_F(TextInserterTest, SavesACopyMadeWhileItWasSaving) {
    clipboard.beforeNextChange = [this] { clipboard.somebodyCopies(u"copied"_s); };
    insert("dictated");
    EXPECT_EQ(text(), u"dictated"_s);
    readBy(kTarget);
    advance(400ms);
    EXPECT_EQ(text(), u"copied"_s);
}

TEST_F(TextInserterTest, RunsInsertionsOneAfterAnother) {
    inserter.insert(u"first"_s);
    inserter.insert(u"second"_s);
    queue.runPosted();
    EXPECT_EQ(keys.pressed.size(), 1u);
    EXPECT_EQ(text(), u"first"_s);
    readBy(kTarget);
    advance(400ms);
    EXPECT_EQ(keys.pressed.size(), 2u);
    advance(400ms);
    EXPECT_EQ(text(), u"second"_s) << "it has read the first alone";
    readBy(kTarget);
    EXPECT_EQ(text(), u"kept"_s);
    EXPECT_EQ(clipboard.saves, 1);
}

TEST_F(TextInserterTest, SavesACopyMadeBetweenTwoInsertions) {
    inserter.insert(u"first"_s);
    inserter.insert(u"second"_s);
    queue.runPosted();
    clipboard.somebodyCopies(u"copied"_s);
    queue.runPosted();
    EXPECT_EQ(text(), u"second"_s);
    readBy(kTarget);
    advance(400ms);
    EXPECT_EQ(text(), u"copied"_s);
}

TEST_F(TextInserterTest, TreatsTerminalsInTheirOwnWay) {
    primary.held = {plainText("selected")};
    focus.window->windowClass = u"XTerm"_s;
    insert("ls");
    EXPECT_THAT(keys.pressed, ElementsAre(PasteShortcut::ShiftInsert));
    EXPECT_EQ(primary.text(), u"ls"_s);

    primary.readBy(kTarget);
    advance(400ms);
    EXPECT_EQ(text(), u"kept"_s);
    EXPECT_EQ(primary.text(), u"selected"_s);
}

TEST_F(TextInserterTest, LetsATerminalReadAfterTheClipboardAloneWasLost) {
    focus.window->windowClass = u"xterm"_s;
    insert("ls");
    clipboard.somebodyCopies(u"copied"_s);
    advance(1s);
    EXPECT_EQ(primary.text(), u"ls"_s);
    primary.readBy(kTarget);
    queue.runPosted();
    EXPECT_THAT(primary.held, IsEmpty());
    EXPECT_EQ(text(), u"copied"_s);
}

TEST_F(TextInserterTest, LeavesTheTextOnTheClipboardAndSaysSoWhereNothingCanBePasted) {
    const std::tuple<const char *, std::function<void(bool)>, const char *> obstacles[] = {
        {"no injection", [this](bool there) { keys.possible = !there; }, ""},
        {"no focus",
         [this, window = focus.window](bool there) { focus.window = there ? std::nullopt : window; }, ""},
        {"locked", [this](bool there) { lock.locked = there; }, ""},
        {"refused", [this](bool there) { keys.works = !there; }, "🎙️ [Insert] Failed to create CGEvent"},
    };
    for (const auto &[name, put, line] : obstacles) {
        put(true);
        insert("dictated");
        EXPECT_EQ(inserter.notice(), u"Copied - press Ctrl+V"_s) << name;
        log.clear();
        inserter.insert(u"dictated"_s);
        EXPECT_TRUE(inserter.notice().isNull()) << "while it is not known how the next ends: " << name;
        queue.runPosted();
        EXPECT_EQ(inserter.notice(), u"Copied - press Ctrl+V"_s) << name;
        advance(3999ms);
        EXPECT_FALSE(inserter.notice().isNull()) << name;
        advance(6s);
        EXPECT_TRUE(inserter.notice().isNull()) << name;
        EXPECT_EQ(text(), u"dictated"_s) << name;
        EXPECT_EQ(log.lines().join(u'|'), QString::fromUtf8(line)) << name;
        put(false);
    }
}

TEST_F(TextInserterTest, PastesNothingWhenTheClipboardCannotBeTaken) {
    clipboard.refusesChanges = true;
    insert("first");
    EXPECT_THAT(keys.pressed, IsEmpty());
    EXPECT_THAT(log.lines(),
                ElementsAre(u"🎙️ [Insert] The clipboard could not be taken, nothing is pasted"_s));
    clipboard.refusesChanges = false;
    insert("second");
    EXPECT_EQ(keys.pressed.size(), 1u);
}

TEST_F(TextInserterTest, DropsNul) {
    inserter.insert(QString(QChar(u'a')) + QChar(QChar::Null) + u'b');
    queue.runPosted();
    EXPECT_EQ(text(), u"ab"_s);
}

TEST_F(TextInserterTest, EndsWithTheClipboardGivenBackAndHandedOver) {
    inserter.insert(u"first"_s);
    inserter.insert(u"dropped"_s);
    queue.runPosted();
    int finished = 0;
    inserter.finish([&finished] { ++finished; });
    readBy(kTarget);
    EXPECT_EQ(text(), u"first"_s);
    advance(400ms);
    EXPECT_EQ(text(), u"kept"_s);
    EXPECT_EQ(clipboard.handedOver, 1);
    advance(10s);
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(keys.pressed.size(), 1u);
}

TEST_F(TextInserterTest, DoesNotWaitLongForAReaderAtTheEnd) {
    insert("dictated");
    int finished = 0;
    inserter.finish([&finished] { ++finished; });
    advance(999ms);
    EXPECT_EQ(finished, 0);
    advance(1ms);
    EXPECT_EQ(text(), u"kept"_s);
    EXPECT_EQ(finished, 1);
}

} // namespace

} // namespace velmo
