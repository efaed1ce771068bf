#include "page_desks.h"
#include "page_view.h"
#include "stage.h"

namespace velmo::screenshots {

namespace {

void photograph(Stage &stage, const QString &name, AccountDesk &desk) {
    PageView page(stage.engine(), MainWindowView::Account, {.account = desk.view.get()});
    stage.photograph(page.window(), name);
}

} // namespace

QList<Scene> accountScenes() {
    return {
        {QStringLiteral("account"),
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.signIn(200);
             desk.synchronise();
             photograph(stage, QStringLiteral("account"), desk);
         }},
        {QStringLiteral("account-syncing"),
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.signIn(200);
             desk.view->syncNow();
             photograph(stage, QStringLiteral("account-syncing"), desk);
         }},
        {QStringLiteral("account-signed-out"),
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.signIn(500);
             photograph(stage, QStringLiteral("account-signed-out"), desk);
         }},
        {QStringLiteral("account-signing-in"),
         [](Stage &stage) {
             AccountDesk desk(false);
             desk.beginSignIn();
             photograph(stage, QStringLiteral("account-signing-in"), desk);
         }},
        {QStringLiteral("account-keyring"),
         [](Stage &stage) {
             AccountDesk desk(true);
             desk.lockKeyring();
             desk.signIn(200);
             photograph(stage, QStringLiteral("account-keyring"), desk);
         }},
        {QStringLiteral("account-local"),
         [](Stage &stage) {
             AccountDesk desk(true);
             photograph(stage, QStringLiteral("account-local"), desk);
         }},
    };
}

} // namespace velmo::screenshots
