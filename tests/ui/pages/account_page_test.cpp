#include "desks/account_page_desk.h"
#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/pages/page_window.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class AccountPageTest : public ::testing::Test, protected testing::AccountPageDesk {};

TEST_F(AccountPageTest, SignsInAndOutWithTheMouse) {
    testing::PageWindow page(u"AccountPage"_s, u"view"_s, &view);
    testing::Person person(page.window());

    person.click(u"Sign in with Apple"_s);
    queue.runPosted();
    EXPECT_TRUE(person.sees(u"Waiting for the browser…"_s));
    EXPECT_EQ(person.focused(), u"Cancel"_s);
    person.press(Qt::Key_Escape);
    settle();
    EXPECT_FALSE(person.sees(u"Waiting for the browser…"_s));
    EXPECT_TRUE(testing::waitUntil([&] { return person.focused() == u"Sign in with Apple"_s; }));

    signIn();
    EXPECT_TRUE(person.sees(u"Signed in as Velmo User"_s));
    EXPECT_TRUE(person.sees(u"i@example.com"_s));
    person.click(u"Sync Now"_s);
    settle();
    EXPECT_TRUE(requests().join(u'|').contains(u"GET /api/sync/dictionary"_s));
    person.click(u"Sign Out"_s);
    settle();
    EXPECT_TRUE(person.sees(u"Not signed in"_s));
    person.tabTo(u"Sign in with Apple"_s); // though what had the keyboard is gone
}

} // namespace velmo
