#pragma once

#include "base/calendar.h"
#include "desks/account_desk.h"
#include "service/sync/sync_manager.h"
#include "store/history_store.h"
#include "ui/models/account_view.h"

namespace velmo::testing {

/// The account page of somebody who is not signed in yet.
struct AccountPageDesk : RestoredAccount {
    explicit AccountPageDesk(bool isLocal = false) : view{{queue, *auth, sync, calendar, isLocal}} {
        server.answer("/api/sync/dictionary", 200, R"({"words":[],"deletedWords":[]})");
        server.answer("/api/sync/snippets", 200, R"({"snippets":[]})");
    }

    void beginSignIn() {
        view.signIn();
        queue.runPosted();
    }
    /// Signs in to the end, with that reply of the service.
    void signIn(int status = 200, const QByteArray &user = R"({"id":"1","email":"i@example.com"})") {
        server.answer("/api/auth/apple", status, R"({"token":"t","user":)" + user + "}");
        beginSignIn();
        web.complete(QStringLiteral("velmo://auth?id_token=it"));
        settle();
    }
    void loseKeyring() { keychain.failure = QStringLiteral("The keyring is locked."); }

    HistoryStore history{preferences, queue};
    SyncManager sync{*ServiceOrigin::parse(server.origin()),
                     {queue, worker, preferences, history, *auth, *auth, http}};
    Calendar calendar{{QStringLiteral("en_US"), QStringLiteral("Europe/Oslo")}};
    AccountView view;
};

} // namespace velmo::testing
