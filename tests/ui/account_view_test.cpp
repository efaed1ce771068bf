#include "desks/account_page_desk.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

class AccountViewTest : public ::testing::Test, protected testing::AccountPageDesk {};

TEST_F(AccountViewTest, SaysHowSigningInEnded) {
    EXPECT_EQ(view.signInText() + u'|' + view.signInSymbol(), u"Sign in with Apple|apple.logo"_s);
    signIn(500);
    EXPECT_EQ(view.errorMessage(), u"Sign-in failed (server error 500). Please try again."_s);
    beginSignIn();
    EXPECT_TRUE(view.isSigningIn() && view.errorMessage().isEmpty());
    view.cancelSignIn();
    settle();
    EXPECT_FALSE(view.isSigningIn());
    EXPECT_TRUE(view.errorMessage().isEmpty());
    signIn();
    EXPECT_EQ(view.userName() + u'|' + view.userEmail(), u"Velmo User|i@example.com"_s);
    EXPECT_TRUE(view.keyringMessage().isEmpty());
}

TEST_F(AccountViewTest, SaysWhatAKeyringThatRefusesMeans) {
    loseKeyring();
    signIn();
    const QString lost =
        u"Nothing is synchronised, and you will have to sign in again: The keyring is locked."_s;
    EXPECT_EQ(view.keyringMessage(), lost);
    keychain.failure.reset();
    view.syncNow();
    settle();
    EXPECT_EQ(view.keyringMessage(), lost) << "the session is lost all the same";
    loseKeyring();
    view.signOut();
    settle();
    EXPECT_EQ(view.keyringMessage(), u"Your session cannot be reached: The keyring is locked."_s);
}

TEST_F(AccountViewTest, TellsHowLongAgoTheListsWereSynchronised) {
    signIn(200, R"({"id":"u-1","name":"Ingrid"})");
    EXPECT_EQ(view.userName(), u"Ingrid"_s);
    EXPECT_EQ(view.syncStatus(), u"Auto-sync enabled"_s);

    view.syncNow();
    queue.runPosted();
    EXPECT_TRUE(view.isSyncing());
    settle();
    EXPECT_FALSE(view.isSyncing());
    view.setShown(true);
    const std::pair<std::chrono::seconds, QString> rows[] = {
        {0s, u"0 sec. ago"_s}, {5s, u"5 sec. ago"_s}, {115s, u"2 min. ago"_s}, {2h, u"2 hr. ago"_s}};
    for (const auto &[passes, ago] : rows) {
        queue.advance(passes);
        EXPECT_EQ(view.syncStatus(), u"Synced "_s + ago + u" · Auto-sync on"_s);
    }
    view.setShown(false);
    EXPECT_EQ(queue.pendingTimers(), 0U) << "a page nobody sees costs nothing";
}

TEST(LocalAccountViewTest, NamesNoProvider) {
    const testing::AccountPageDesk local(true);
    EXPECT_EQ(local.view.signInText() + u'|' + local.view.signInSymbol(), u"Sign In|person.circle"_s);
    EXPECT_FALSE(local.view.invitation().contains(u"Apple"_s));
}

} // namespace velmo
