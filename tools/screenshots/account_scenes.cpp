#include "desks/account_page_desk.h"
#include "page_view.h"
#include "stage.h"

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

namespace {

using testing::AccountPageDesk;

void signIn(AccountPageDesk &desk, int status = 200) {
    desk.signIn(status, R"({"id":"1","name":"Ingrid Solberg","email":"ingrid.solberg@example.com"})");
}

void photograph(Stage &stage, const QString &name, AccountPageDesk &desk) {
    PageView page(stage.engine(), MainWindowView::Account, {.account = &desk.view});
    stage.photograph(page.window(), name);
}

} // namespace

QList<Scene> accountScenes() {
    return {
        {u"account"_s,
         [](Stage &stage) {
             AccountPageDesk desk(false);
             signIn(desk);
             desk.view.syncNow();
             desk.settle();
             desk.queue.advance(std::chrono::minutes(5));
             photograph(stage, u"account"_s, desk);
         }},
        {u"account-syncing"_s,
         [](Stage &stage) {
             AccountPageDesk desk(false);
             signIn(desk);
             desk.view.syncNow();
             photograph(stage, u"account-syncing"_s, desk);
         }},
        {u"account-signed-out"_s,
         [](Stage &stage) {
             AccountPageDesk desk(false);
             signIn(desk, 500);
             photograph(stage, u"account-signed-out"_s, desk);
         }},
        {u"account-signing-in"_s,
         [](Stage &stage) {
             AccountPageDesk desk(false);
             desk.beginSignIn();
             photograph(stage, u"account-signing-in"_s, desk);
         }},
        {u"account-keyring"_s,
         [](Stage &stage) {
             AccountPageDesk desk(true);
             desk.loseKeyring();
             signIn(desk);
             photograph(stage, u"account-keyring"_s, desk);
         }},
        {u"account-local"_s,
         [](Stage &stage) {
             AccountPageDesk desk(true);
             photograph(stage, u"account-local"_s, desk);
         }},
    };
}

} // namespace velmo::screenshots
