#include "desks/window_desk.h"
#include "store/snippet_list.h"
#include "support/manual_main_queue.h"
#include "support/person.h"
#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/flow/flow_placement.h"

#include <QQmlEngine>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

struct Engine {
    QQmlEngine engine;
};

/// Somebody in front of the main window.
class MainWindowTest : public ::testing::Test,
                       protected Engine,
                       protected testing::WindowDesk<testing::ManualMainQueue> {
protected:
    MainWindowTest() : WindowDesk(engine) {}

    testing::Person openWindow() {
        controller.show();
        return testing::Person(*controller.window());
    }

    [[nodiscard]] QStringList triggers() const {
        QStringList triggers;
        for (const SnippetEntry &snippet : snippets(preferences))
            triggers.append(snippet.trigger + u'=' + snippet.expansion);
        return triggers;
    }

    /// Movements of sheets and menus take their time.
    [[nodiscard]] static bool comes(const std::function<bool()> &condition) {
        return testing::waitUntil(condition);
    }
};

TEST_F(MainWindowTest, WordsAreAddedFoundAndRemovedByKeyboardAlone) {
    testing::Person person = openWindow();
    person.press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(person.focused(), u"Add a new word..."_s) << "an empty dictionary waits for a word";
    EXPECT_TRUE(person.sees(u"No custom words yet"_s));
    for (const auto &word : {u"Bodø"_s, u"Lyse"_s, u"Tromsø"_s}) {
        person.type(word);
        person.press(Qt::Key_Return);
    }
    EXPECT_TRUE(person.sees(u"3 words"_s));

    person.press(Qt::Key_F, Qt::ControlModifier);
    person.type(u"ø"_s);
    EXPECT_TRUE(comes([&] { return person.sees(u"Tromsø"_s) && !person.sees(u"Lyse"_s); }));
    person.tabTo(u"Bodø"_s);
    person.press(Qt::Key_Right);
    EXPECT_EQ(person.focused(), u"Tromsø"_s);
    person.press(Qt::Key_Left);
    person.press(Qt::Key_Delete);
    EXPECT_EQ(person.focused(), u"Tromsø"_s) << "the keyboard goes on with what takes the place";
    EXPECT_EQ(dictionary.words(), QStringList({u"Lyse"_s, u"Tromsø"_s}));
    EXPECT_TRUE(comes([&] { return person.sees(u"“Bodø” removed"_s); }));
    person.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(dictionary.words(), QStringList({u"Bodø"_s, u"Lyse"_s, u"Tromsø"_s}));

    person.press(Qt::Key_1, Qt::ControlModifier);
    person.press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(person.focused(), u"Tromsø"_s) << "a page that was left is as it was";
    person.press(Qt::Key_F, Qt::ControlModifier);
    person.press(Qt::Key_Escape);
    EXPECT_TRUE(comes([&] { return person.sees(u"Lyse"_s); }));
}

TEST_F(MainWindowTest, ATriggerThatIsTakenIsSaidAndCorrected) {
    addSnippet(preferences, u"adr"_s, u"Storgata 1"_s);
    watch.noteWrite();
    queue.runPosted();
    testing::Person person = openWindow();
    person.press(Qt::Key_3, Qt::ControlModifier);
    person.tabTo(u"Add Snippet"_s);
    person.press(Qt::Key_Return);
    EXPECT_TRUE(comes([&] { return person.focused() == u"When I say..."_s; }));
    person.type(u"Adr"_s);
    person.press(Qt::Key_Tab);
    person.type(u"Storgata 2"_s);
    person.tabTo(u"Save"_s);
    person.press(Qt::Key_Return);
    EXPECT_TRUE(comes([&] { return person.focused() == u"OK"_s; }));
    person.press(Qt::Key_Return);
    EXPECT_TRUE(comes([&] { return person.focused() == u"When I say..."_s; }));
    person.type(u"ny adresse"_s); // in place of the selected text
    person.tabTo(u"Save"_s);
    person.press(Qt::Key_Return);
    EXPECT_TRUE(comes([&] { return person.sees(u"2 snippets"_s) && !person.sees(u"Save"_s); }));
    EXPECT_EQ(triggers(), QStringList({u"adr=Storgata 1"_s, u"ny adresse=Storgata 2"_s}));

    person.click(u"Edit snippet adr"_s);
    EXPECT_TRUE(comes([&] { return person.focused() == u"When I say..."_s; }));
    person.press(Qt::Key_Escape);
    EXPECT_TRUE(comes([&] { return !person.sees(u"Save"_s); }));
    EXPECT_EQ(snippetsView.sheet(), nullptr);
    person.click(u"Remove snippet adr"_s);
    EXPECT_EQ(triggers(), QStringList({u"ny adresse=Storgata 2"_s}));
}

TEST_F(MainWindowTest, ADictatedTextIsCopiedAndDeletedByKeyboardAndMouse) {
    for (const auto &text : {u"  nummer én\n"_s, u"nummer to"_s, u"nummer tre"_s}) {
        history.add(text, std::nullopt);
        queue.setNow(queue.now() + std::chrono::milliseconds(1));
    }
    const QString now = calendar.timeOfDay(queue.now());
    const auto row = [&](const QString &text) { return u"Today, "_s + now + u", "_s + text; };
    testing::Person person = openWindow();
    person.press(Qt::Key_1, Qt::ControlModifier);
    person.tabTo(row(u"nummer tre"_s));
    person.press(Qt::Key_End);
    EXPECT_EQ(person.focused(), row(u"  nummer én\n"_s));
    person.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied, QStringList{u"  nummer én\n"_s});

    person.press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(comes([&] { return person.sees(u"Delete"_s); }));
    person.press(Qt::Key_Down);
    person.press(Qt::Key_Down);
    person.press(Qt::Key_Return);
    EXPECT_TRUE(comes([&] { return person.focused() == row(u"nummer to"_s); }))
        << qUtf8Printable(person.focused());
    EXPECT_EQ(history.entries().size(), 2);
    EXPECT_TRUE(comes([&] { return person.sees(u"Undo"_s); }));
    person.click(u"Undo"_s);
    EXPECT_EQ(history.entries().last().text, u"  nummer én\n"_s);
    person.tabTo(row(u"nummer to"_s));
    person.press(Qt::Key_Delete);
    EXPECT_EQ(history.entries().size(), 2);
}

TEST_F(MainWindowTest, TheSameWindowComesBackAfterClosing) {
    testing::Person person = openWindow();
    person.tabTo(u"Home"_s);
    person.press(Qt::Key_Down);
    EXPECT_EQ(person.focused(), u"Dictionary"_s);
    person.press(Qt::Key_Space);
    EXPECT_EQ(view.selectedPage(), MainWindowView::Dictionary);
    const QQuickWindow *window = controller.window();
    EXPECT_EQ(window->minimumSize(), QSize(700, 500));

    controller.window()->close();
    EXPECT_FALSE(controller.window()->isVisible());
    controller.show();
    EXPECT_EQ(controller.window(), window);
    EXPECT_EQ(view.selectedPage(), MainWindowView::Dictionary);

    hasTray = false;
    controller.window()->close();
    EXPECT_TRUE(comes([&] { return person.focused() == u"OK"_s; }))
        << "without a tray it first tells how to come back";
    EXPECT_TRUE(controller.window()->isVisible());
    person.press(Qt::Key_Return);
    EXPECT_TRUE(comes([&] { return !controller.window()->isVisible(); }));
}

TEST_F(MainWindowTest, OfThousandsOfWordsOnlyThoseInSightExist) {
    QStringList words;
    for (int number = 1000; number < 3000; ++number)
        words.append(QString::number(number));
    preferences.set(keys::dictionary, serialiseDictionary(words));
    watch.noteWrite();
    queue.runPosted();
    testing::Person person = openWindow();
    person.press(Qt::Key_2, Qt::ControlModifier);
    person.tabTo(u"1000"_s);
    EXPECT_FALSE(person.sees(u"2999"_s));
    person.press(Qt::Key_End);
    EXPECT_EQ(person.focused(), u"2999"_s);
    EXPECT_TRUE(comes([&] { return person.sees(u"2998"_s) && !person.sees(u"1001"_s); }));
}

TEST(FlowPlacement, PlacesLikeWords) {
    struct Row {
        const char *name;
        QList<qreal> widths;
        qreal available;
        QList<QPointF> places;
        QSizeF size;
    };
    const Row rows[] = {
        {"nothing", {}, 100, {}, {0, 0}},
        {"one line, the last spacing counts", {40, 50}, 100, {{0, 0}, {46, 0}}, {102, 10}},
        {"exactly to the edge", {44, 50}, 100, {{0, 0}, {50, 0}}, {106, 10}},
        {"a new line", {40, 60, 20}, 100, {{0, 0}, {0, 16}, {66, 16}}, {92, 26}},
        {"too wide: a line of its own", {20, 200, 20}, 100, {{0, 0}, {0, 16}, {0, 32}}, {206, 42}},
        {"no width proposed", {20, 30}, 0, {{0, 0}, {0, 16}}, {36, 26}},
    };
    for (const Row &row : rows) {
        QList<QSizeF> sizes;
        for (const qreal width : row.widths)
            sizes.append({width, 10});
        const FlowPlacement placement = flowPlacement(sizes, 6, row.available);
        EXPECT_EQ(placement.places, row.places) << row.name;
        EXPECT_EQ(placement.size, row.size) << row.name;
    }
    EXPECT_EQ(flowPlacement({{10, 5}, {10, 20}, {90, 5}}, 4, 100).places.last(), QPointF(0, 24))
        << "a line is as high as its highest";
}

} // namespace velmo
