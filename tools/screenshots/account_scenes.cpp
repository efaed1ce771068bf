#include "base/calendar.h"
#include "page_view.h"
#include "service/account_fixture.h"
#include "service/sync_manager.h"
#include "stage.h"
#include "store/history_store.h"
#include "ui/models/account_view.h"

#include <memory>

using namespace std::chrono_literals;

namespace velmo::screenshots {

namespace {

/// An account at a scripted service, as the tests have it.
class AccountDesk : public testing::AccountTest {
public:
    explicit AccountDesk(bool isLocal) {
        createAuth();
        settle();
        m_sync = std::make_unique<SyncManager>(
            *ServiceOrigin::parse(server.origin()),
            SyncManager::Collaborators{queue, worker, preferences, m_history, *auth, *auth, http});
        view = std::make_unique<AccountView>(
            AccountView::Collaborators{queue, *auth, *m_sync, m_calendar, isLocal});
        server.answer("/api/sync/dictionary", 200, R"({"words":[],"deletedWords":[]})");
        server.answer("/api/sync/snippets", 200, R"({"snippets":[]})");
    }

    void beginSignIn() {
        view->signIn();
        queue.runPosted();
    }

    void signIn(int status) {
        server.answer(
            "/api/auth/apple", status,
            R"({"token":"t","user":{"id":"1","name":"Ingrid Solberg","email":"ingrid.solberg@example.com"}})");
        beginSignIn();
        web.complete(QStringLiteral("velmo://auth?id_token=t"));
        settle();
    }

    void synchronise() {
        view->syncNow();
        settle();
        queue.advance(5min);
    }

    void TestBody() override {}

    std::unique_ptr<AccountView> view;

private:
    HistoryStore m_history{preferences, queue};
    Calendar m_calendar{{QStringLiteral("en_US"), QStringLiteral("Europe/Oslo")}};
    std::unique_ptr<SyncManager> m_sync;
};

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
        {QStringLiteral("account-local"),
         [](Stage &stage) {
             AccountDesk desk(true);
             photograph(stage, QStringLiteral("account-local"), desk);
         }},
    };
}

} // namespace velmo::screenshots
