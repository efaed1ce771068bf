#include "desks/setup_desk.h"
#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/pages/page_window.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class SettingsPageTest : public ::testing::Test, protected testing::SettingsDesk {
protected:
    testing::PageWindow page{u"SettingsPage"_s, u"view"_s, &view};
    testing::Person person{page.window()};
};

TEST_F(SettingsPageTest, ChangesLanguagesByKeyboardAlone) {
    person.tabTo(u"Primary Language"_s);
    for (const int key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return})
        person.press(key);
    EXPECT_EQ(desktop.preferences.string(keys::primaryLanguage), u"sv"_s);
    ASSERT_TRUE(testing::waitUntil([&] { return person.focused() == u"Primary Language"_s; }));
    person.tabTo(u"Norwegian"_s);
    person.press(Qt::Key_Down);
    person.press(Qt::Key_Space);
    EXPECT_TRUE(person.isChecked(u"Swedish"_s)) << "the primary language stays";
    person.press(Qt::Key_Down);
    person.press(Qt::Key_Return);
    EXPECT_FALSE(person.isChecked(u"Danish"_s));
    EXPECT_EQ(desktop.preferences.string(keys::selectedLanguages), u"en,fi,no,sv"_s);
    person.tabTo(u"Selected languages"_s);
    person.press(Qt::Key_Right);
    EXPECT_EQ(desktop.preferences.string(keys::ruleScope), u"spoken"_s);
    person.tabTo(u"Start at Login"_s);
    person.press(Qt::Key_Space);
    EXPECT_TRUE(desktop.loginItem.isOn);
    desktop.loginItem.failure = u"Could not change it"_s;
    person.press(Qt::Key_Space);
    EXPECT_TRUE(person.isChecked(u"Start at Login"_s)) << "the switch shows what is";
    EXPECT_TRUE(person.sees(u"Could not change it"_s));
}

TEST_F(SettingsPageTest, CapturesAKeyThatIsPressed) {
    desktop.listener.setupFnKey();
    EXPECT_FALSE(person.sees(u"Open Settings"_s)) << "nothing is missing";
    person.tabTo(u"Change…"_s);
    person.press(Qt::Key_Return);
    EXPECT_TRUE(person.sees(u"Press a key…"_s));
    person.pressKeyAt(38, Qt::Key_A);
    EXPECT_TRUE(person.sees(u"This key is needed for writing."_s));
    person.pressKeyAt(23, Qt::Key_Tab);
    EXPECT_TRUE(person.sees(u"Press a key…"_s)) << "Tab does not lead away";
    person.pressKeyAt(9, Qt::Key_Escape);
    EXPECT_EQ(person.focused(), u"Change…"_s);

    person.click(u"Change…"_s);
    person.pressKeyAt(127, Qt::Key_Pause);
    EXPECT_EQ(desktop.tap.key, u"PAUS"_s);
    EXPECT_TRUE(person.sees(u"Pause"_s));

    person.click(u"Change…"_s);
    person.click(u"Danish"_s);
    EXPECT_FALSE(view.triggerKey()->isCapturing()) << "something else was begun";
}

} // namespace velmo
