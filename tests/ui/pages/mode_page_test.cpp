#include "desks/mode_desk.h"
#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/pages/page_window.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class ModePageTest : public ::testing::Test, protected testing::ModeDesk {
protected:
    [[nodiscard]] QString chosen() const { return selectedModeId(preferences); }

    testing::PageWindow page{u"ModePage"_s, u"view"_s, &view};
    testing::Person person{page.window()};
};

TEST_F(ModePageTest, WorksByKeyboardAlone) {
    person.tabTo(u"Smart Formatting"_s);
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Return}) {
        const bool was = smartFormatting(preferences);
        person.press(key);
        EXPECT_NE(smartFormatting(preferences), was) << key;
    }
    EXPECT_FALSE(smartFormatting(preferences));
    EXPECT_TRUE(person.sees(u"Base cleanup only"_s));

    // Arrow keys go from card to card, in two columns.
    person.tabTo(u"Accurate"_s);
    for (const int key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Space})
        person.press(key);
    EXPECT_EQ(chosen(), u"professional"_s);
    EXPECT_TRUE(person.isChecked(u"Professional"_s));

    // A mode of one's own; Escape leaves nothing behind and gives the keyboard back.
    person.tabTo(u"New Mode"_s);
    person.press(Qt::Key_Return);
    person.type(u"Mail"_s);
    person.press(Qt::Key_Escape);
    EXPECT_FALSE(view.sheet());
    ASSERT_TRUE(testing::waitUntil([&] { return person.focused() == u"New Mode"_s; }));
    person.press(Qt::Key_Return);
    EXPECT_EQ(person.focused(), u"Name"_s);
    person.type(u"Mail"_s);
    person.press(Qt::Key_Return);
    EXPECT_TRUE(view.sheet()) << "a mode without a prompt cannot be made";
    person.press(Qt::Key_Tab);
    person.type(u"Write a mail."_s);
    person.tabTo(u"sparkles"_s);
    person.press(Qt::Key_Down);
    person.tabTo(u"Create"_s);
    person.press(Qt::Key_Return);
    const QList<CustomMode> made = customModes(preferences);
    ASSERT_EQ(made.size(), 1);
    EXPECT_EQ(made[0].name + u'|' + made[0].systemPrompt + u'|' + made[0].icon,
              u"Mail|Write a mail.|globe"_s);

    ASSERT_TRUE(testing::waitUntil([&] { return person.focused() == u"New Mode"_s; }));
    person.tabTo(u"Mail"_s);
    person.press(Qt::Key_Space);
    EXPECT_EQ(chosen(), made[0].id);
    person.press(Qt::Key_Up);
    EXPECT_EQ(person.focused(), u"Professional"_s);
    person.press(Qt::Key_Down);
    person.press(Qt::Key_Down);
    person.press(Qt::Key_Delete);
    EXPECT_EQ(chosen(), u"accurate"_s);
    EXPECT_TRUE(person.sees(u"No custom modes yet"_s));
    EXPECT_EQ(person.focused(), u"New Mode"_s) << "the keyboard is not lost with the last mode";
}

TEST_F(ModePageTest, EditsAModeWithTheMouse) {
    addCustomMode(preferences, {u"1"_s, u"Mail"_s, u"Write a mail."_s, u"envelope"_s});
    watch.noteWrite();
    queue.runPosted();
    person.click(u"Edit mode Mail"_s);
    ASSERT_TRUE(testing::waitUntil([&] { return person.sees(u"globe"_s); }));
    person.type(u"s"_s);
    person.click(u"globe"_s);
    person.click(u"Save"_s);
    ASSERT_TRUE(testing::waitUntil([&] { return !person.sees(u"Save"_s); }));
    EXPECT_EQ(customModes(preferences)[0].name + u'|' + customModes(preferences)[0].icon, u"Mails|globe"_s);
    EXPECT_EQ(chosen(), u"accurate"_s) << "to edit a mode is not to choose it";
    person.click(u"Mails"_s);
    EXPECT_EQ(chosen(), u"1"_s);
}

} // namespace velmo
