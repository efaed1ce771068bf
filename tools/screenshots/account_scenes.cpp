#include "page_desks.h"
#include "page_view.h"
#include "stage.h"

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

namespace {

void photograph(Stage &stage, const QString &name, AccountDesk &desk) {
    PageView page(stage.engine(), MainWindowView::Account, {.account = desk.view.get()});
    stage.photograph(page.window(), name);
}

} // namespace

QList<Scene> accountScenes() {
    return {
        {u"account"_s,
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.signIn(200);
             desk.synchronise();
             photograph(stage, u"account"_s, desk);
         }},
        {u"account-syncing"_s,
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.signIn(200);
             desk.view->syncNow();
             photograph(stage, u"account-syncing"_s, desk);
         }},
        {u"account-signed-out"_s,
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.signIn(500);
             photograph(stage, u"account-signed-out"_s, desk);
         }},
        {u"account-signing-in"_s,
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.beginSignIn();
             photograph(stage, u"account-signing-in"_s, desk);
         }},
        {u"account-keyring"_s,
         [](Stage &stage) {
             AccountDesk desk(true);
             desk.lockKeyring();
             desk.signIn(200);
             photograph(stage, u"account-keyring"_s, desk);
         }},
        {u"account-local"_s,
         [](Stage &stage) {
             AccountDesk desk(true);
             photograph(stage, u"account-local"_s, desk);
         }},
    };
}

} // namespace velmo::screenshots
