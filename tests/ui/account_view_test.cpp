#include "ui/models/account_view.h"

#include "base/calendar.h"
#include "service/account/account_fixture.h"
#include "service/sync/sync_manager.h"
#include "store/history_store.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

/// The account of the fixture, there before what is built on it.
class RestoredAccount : public testing::AccountTest {
protected:
    RestoredAccount() {
        createAuth();
        settle();
    }
};

class AccountViewTest : public RestoredAccount {
protected:
    HistoryStore history{preferences, queue};
    SyncManager sync{*ServiceOrigin::parse(server.origin()),
                     {queue, worker, preferences, history, *auth, *auth, http}};
    const Calendar calendar{{u"en_GB"_s, u"Europe/Oslo"_s}};
    AccountView view{{queue, *auth, sync, calendar, false}};
};

TEST_F(AccountViewTest, SignsInThroughTheBrowserAndOutAgain) {
    EXPECT_EQ(view.signInText() + u'|' + view.signInSymbol(), u"Sign in with Apple|apple.logo"_s);
    view.signIn();
    queue.runPosted();
    EXPECT_TRUE(view.isSigningIn());
    view.cancelSignIn();
    settle();
    EXPECT_FALSE(view.isSigningIn());
    EXPECT_TRUE(view.errorMessage().isEmpty());

    server.answer("/api/auth/apple", 500, "{}");
    view.signIn();
    queue.runPosted();
    web.complete(u"velmo://auth?id_token=it"_s);
    settle();
    EXPECT_EQ(view.errorMessage(), u"Sign-in failed (server error 500). Please try again."_s);

    server.answer("/api/auth/apple", 200, R"({"token":"t","user":{"id":"u-1","email":"i@example.com"}})");
    view.signIn();
    queue.runPosted();
    EXPECT_TRUE(view.errorMessage().isEmpty());
    web.complete(u"velmo://auth?id_token=it"_s);
    settle();
    EXPECT_TRUE(view.isSignedIn());
    EXPECT_EQ(view.userName() + u'|' + view.userEmail(), u"Velmo User|i@example.com"_s);

    view.signOut();
    settle();
    EXPECT_FALSE(view.isSignedIn());
    EXPECT_TRUE(view.keyringMessage().isEmpty());

    keychain.failure = u"The keyring is locked."_s;
    view.signIn();
    queue.runPosted();
    web.complete(u"velmo://auth?id_token=it"_s);
    settle();
    const QString lost =
        u"Nothing is synchronised, and you will have to sign in again: The keyring is locked."_s;
    EXPECT_EQ(view.keyringMessage(), lost);
    keychain.failure.reset();
    view.syncNow();
    settle();
    EXPECT_EQ(view.keyringMessage(), lost) << "the session is lost all the same";
    keychain.failure = u"The keyring is locked."_s;
    view.signOut();
    settle();
    EXPECT_EQ(view.keyringMessage(), u"Your session cannot be reached: The keyring is locked."_s);
}

TEST_F(AccountViewTest, TellsHowLongAgoTheListsWereSynchronised) {
    server.answer("/api/auth/apple", 200, R"({"token":"t","user":{"id":"u-1","name":"Ingrid"}})");
    view.signIn();
    queue.runPosted();
    web.complete(u"velmo://auth?id_token=it"_s);
    settle();
    EXPECT_EQ(view.userName(), u"Ingrid"_s);
    EXPECT_EQ(view.syncStatus(), u"Auto-sync enabled"_s);

    server.answer("/api/sync/dictionary", 200, R"({"words":[],"deletedWords":[]})");
    server.answer("/api/sync/snippets", 200, R"({"snippets":[]})");
    view.syncNow();
    queue.runPosted();
    EXPECT_TRUE(view.isSyncing());
    settle();
    EXPECT_FALSE(view.isSyncing());
    view.setShown(true);
    EXPECT_EQ(view.syncStatus(), u"Synced 0 sec ago · Auto-sync on"_s);
    const struct {
        std::chrono::seconds passes;
        QString status;
    } rows[] = {
        {5s, u"Synced 5 sec ago · Auto-sync on"_s},
        {115s, u"Synced 2 min ago · Auto-sync on"_s},
        {2h, u"Synced 2 hr ago · Auto-sync on"_s},
    };
    for (const auto &row : rows) {
        queue.advance(row.passes);
        EXPECT_EQ(view.syncStatus(), row.status);
    }
    view.setShown(false);
    EXPECT_EQ(queue.pendingTimers(), 0U) << "a page nobody sees costs nothing";
}

TEST_F(AccountViewTest, NamesNoProviderForAServiceOnThisMachine) {
    const AccountView local{{queue, *auth, sync, calendar, true}};
    EXPECT_EQ(local.signInText() + u'|' + local.signInSymbol(), u"Sign In|person.circle"_s);
    EXPECT_FALSE(local.invitation().contains(u"Apple"_s));
}

} // namespace velmo
