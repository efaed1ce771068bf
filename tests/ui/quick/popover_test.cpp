#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/floating/floating_view.h"
#include "ui/models/menu_bar_view.h"
#include "ui/popover/popover_window.h"
#include "ui/quick/accessible_tree.h"
#include "ui/quick/floating_fakes.h"
#include "ui/shown_dictation.h"

#include <QCursor>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

class PopoverTest : public ::testing::Test {
protected:
    PopoverTest() {
        stage.controls.startListening();
        QCursor::setPos(700, 10);
    }

    std::unique_ptr<MenuBarView> makeContent() {
        MenuBarView::Actions actions;
        actions.openVelmo = [this] { popover.close(), opened = true; };
        actions.quit = [this] { hasQuit = true; };
        actions.showPermission = [this] { permissionShown = true; };
        actions.copy = [this](const QString &text) { copied = text; };
        auto made = std::make_unique<MenuBarView>(
            MenuBarView::Collaborators{stage.queue, stage.triggerKeyName, stage.manager, stage.history,
                                       stage.listener, stage.permission},
            std::move(actions), Region{u"en_US"_s, u"UTC"_s});
        content = made.get();
        return made;
    }
    void open() {
        popover.toggle({});
        ASSERT_TRUE(QTest::qWaitForWindowExposed(popover.view()));
        popover.view()->requestActivate();
        ASSERT_TRUE(testing::waitUntil([this] { return popover.view()->isActive(); }));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(popover.view(), key, modifiers);
    }
    [[nodiscard]] bool focusIsOnRow() const {
        const QQuickItem *item = popover.view()->activeFocusItem();
        return item && QString::fromLatin1(item->metaObject()->className()).startsWith(u"RecentRow");
    }
    [[nodiscard]] bool isLive() { return testing::accessibleNames(*popover.view()).contains(u"LIVE"_s); }
    [[nodiscard]] QColor stateColor() {
        for (const QQuickItem *item : popover.view()->rootObject()->findChildren<QQuickItem *>()) {
            if (const QVariant color = item->property("stateColor"); color.isValid())
                return color.value<QColor>();
        }
        return {};
    }
    [[nodiscard]] QStringList texts() const {
        QStringList texts;
        for (const Entry &entry : stage.history.entries())
            texts.append(entry.text);
        return texts;
    }

    testing::ShownDictation stage;
    testing::FakeFloatingWindows desktop;
    testing::FakeMouseMonitor mouse;
    QQmlEngine engine;
    MenuBarView *content = nullptr;
    bool opened = false;
    bool hasQuit = false;
    bool permissionShown = false;
    QString copied;
    PopoverWindow popover{{engine, stage.queue, desktop, mouse}, [this] { return makeContent(); }};
};

TEST_F(PopoverTest, TellsTheStateAndHowToGoOn) {
    QAccessible::setActive(true);
    open();
    const auto status = [this] {
        QString text = content->title() + u" / "_s + content->subtitle();
        return text.replace(QChar::Nbsp, u' ');
    };
    EXPECT_EQ(status(), u"Ready / Hold Right Control or double-tap Right Control"_s);
    EXPECT_FALSE(isLive());
    stage.listener.fnDown(stage.queue.uptime());
    stage.queue.advance(1s);
    EXPECT_EQ(status(), u"Listening... / Release Right Control to stop"_s);
    EXPECT_TRUE(isLive());
    EXPECT_GT(stateColor().red(), stateColor().blue());
    EXPECT_FALSE(desktop.keyboardIsOut) << "the text goes where the keyboard was";
    stage.listener.fnUp(stage.queue.uptime());
    stage.queue.runPosted();
    EXPECT_EQ(status(), u"Transcribing... / Processing your speech"_s);
    EXPECT_GT(stateColor().blue(), stateColor().red());
    popover.toggle({});
    open();
    EXPECT_FALSE(desktop.keyboardIsOut);
    stage.transcriber.complete(failed(TranscriptionError::timeout()));
    stage.queue.runPosted();
    EXPECT_EQ(content->errorMessage(), u"Request timed out"_s);
    QCursor::setPos(popover.view()->geometry().center());
    mouse.click({});
    EXPECT_TRUE(desktop.keyboardIsOut) << "a click within takes it again";
    stage.hotkey.pressed();
    stage.queue.runPosted();
    EXPECT_EQ(status(), u"Listening... / Tap Right Control to stop"_s);
    EXPECT_EQ(content->errorMessage(), QString());
}

TEST_F(PopoverTest, FollowsThePermissionWithinTwoSeconds) {
    stage.listener.stopListening();
    stage.permission.trusted = false;
    open();
    EXPECT_TRUE(content->isSetupRequired());
    EXPECT_EQ(content->subtitle(), u"Ctrl+Shift+A to record"_s);
    EXPECT_EQ(content->emptyHint(), u"Press Ctrl+Shift+A to dictate"_s);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_TRUE(permissionShown);

    stage.permission.trusted = true;
    stage.queue.advance(2s);
    EXPECT_FALSE(content->isSetupRequired());
    EXPECT_TRUE(content->subtitle().startsWith(u"Hold"_s));
    stage.permission.trusted = false;
    stage.listener.stopListening();
    stage.queue.advance(2s);
    EXPECT_TRUE(content->isSetupRequired());
    stage.manager.startRecording();
    stage.queue.runPosted();
    EXPECT_EQ(content->subtitle(), u"Ctrl+Shift+A to stop"_s);
}

TEST_F(PopoverTest, CopiesAndDeletesByKeyboard) {
    for (const QString &text : {u"eins"_s, u"zwei"_s, u"drei"_s})
        stage.history.add(text, std::nullopt);
    open();
    press(Qt::Key_Tab); // the list
    press(Qt::Key_Down);
    press(Qt::Key_Menu);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(copied, u"zwei"_s);
    ASSERT_TRUE(testing::waitUntil([this] { return focusIsOnRow(); })) << "the menu fades";
    press(Qt::Key_F10, Qt::ShiftModifier);
    stage.history.add(u"vier"_s, std::nullopt); // moves the row whose menu it is
    stage.queue.runPosted();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(texts(), (QStringList{u"vier"_s, u"drei"_s, u"eins"_s}));
    EXPECT_EQ(content->entryCount(), 3);

    ASSERT_TRUE(testing::waitUntil([this] { return focusIsOnRow(); }));
    press(Qt::Key_Menu);
    press(Qt::Key_Escape); // the menu
    EXPECT_TRUE(popover.isShown());
    ASSERT_TRUE(testing::waitUntil([this] { return focusIsOnRow(); }));
    press(Qt::Key_Escape); // the popover
    EXPECT_FALSE(popover.isShown());
    EXPECT_FALSE(desktop.keyboardIsOut);
}

TEST_F(PopoverTest, HasTimesThatTick) {
    stage.history.add(u"Hei"_s, std::nullopt);
    open();
    RowModel<RecentEntry> &rows = *content->recentEntries();
    int changes = 0;
    QObject::connect(&rows, &QAbstractItemModel::dataChanged, &rows, [&] { ++changes; });
    stage.queue.advance(2min);
    EXPECT_EQ(rows.rows()[0].timeAgo, u"2 min. ago"_s);
    EXPECT_GT(changes, 0);
}

TEST_F(PopoverTest, ClosesByAClickElsewhereAndStaysClosedForThatPress) {
    open();
    const QPoint icon = QCursor::pos();
    QCursor::setPos(popover.view()->geometry().center());
    mouse.click({});
    EXPECT_TRUE(popover.isShown());
    QCursor::setPos(icon);
    mouse.click({});
    EXPECT_FALSE(popover.isShown());
    popover.toggle({}); // the status item tells of the same press
    EXPECT_FALSE(popover.isShown());
    stage.queue.advance(1s);
    popover.toggle({});
    EXPECT_TRUE(popover.isShown());
}

TEST_F(PopoverTest, LeadsToTheMainWindowAndOut) {
    open();
    press(Qt::Key_Backtab); // the last control
    press(Qt::Key_Space);
    EXPECT_TRUE(hasQuit);
    press(Qt::Key_Backtab);
    press(Qt::Key_Return);
    EXPECT_TRUE(opened);
    EXPECT_FALSE(popover.isShown());
}

TEST(PopoverPlacementTest, IsBesideTheItemAndWithinTheScreen) {
    const QRect screen(0, 26, 1280, 774);
    const std::tuple<const char *, QRect, QRect, QPoint> rows[] = {
        {"in the middle of a panel at the top", {600, 0, 24, 26}, screen, {442, 34}},
        {"in the corner", {1256, 0, 24, 26}, screen, {932, 34}},
        {"at the foot", {1256, 776, 24, 24}, {0, 0, 1280, 776}, {932, 308}},
        {"on a second screen", {1300, 0, 24, 24}, {1280, 24, 800, 576}, {1288, 32}},
        {"on a screen that is too small", {10, 0, 24, 24}, {0, 24, 320, 400}, {8, 32}},
    };
    for (const auto &[name, item, visibleFrame, expected] : rows)
        EXPECT_EQ(PopoverWindow::placement(item, visibleFrame), QRect(expected, PopoverWindow::contentSize))
            << name;
}

} // namespace

} // namespace velmo
