#include "base/calendar.h"
#include "service/account/account_fixture.h"
#include "service/sync/sync_manager.h"
#include "store/history_store.h"
#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/models/account_view.h"
#include "ui/pages/page_window.h"

using namespace Qt::StringLiterals;

namespace velmo {

class AccountPageTest : public testing::AccountTest {};

TEST_F(AccountPageTest, SignsInAndOutWithTheMouse) {
    createAuth();
    settle();
    HistoryStore history(preferences, queue);
    SyncManager sync(*ServiceOrigin::parse(server.origin()),
                     {queue, worker, preferences, history, *auth, *auth, http});
    const Calendar calendar({u"en_GB"_s, u"Europe/Oslo"_s});
    AccountView account({queue, *auth, sync, calendar, false});
    testing::PageWindow page(u"AccountPage"_s, u"view"_s, &account);
    testing::Person person(page.window());

    person.click(u"Sign in with Apple"_s);
    queue.runPosted();
    EXPECT_TRUE(person.sees(u"Waiting for the browser…"_s));
    EXPECT_EQ(person.focused(), u"Cancel"_s);
    person.press(Qt::Key_Escape);
    settle();
    EXPECT_FALSE(person.sees(u"Waiting for the browser…"_s));
    EXPECT_TRUE(testing::waitUntil([&] { return person.focused() == u"Sign in with Apple"_s; }));

    server.answer("/api/auth/apple", 200, R"({"token":"t","user":{"id":"1","email":"i@example.com"}})");
    person.click(u"Sign in with Apple"_s);
    queue.runPosted();
    web.complete(u"velmo://auth?id_token=it"_s);
    settle();
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
