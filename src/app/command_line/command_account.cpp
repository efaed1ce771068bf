#include "app/command_line/command_account.h"

#include "app/process/event_loop.h"
#include "service/account/auth_manager.h"
#include "service/http/http_client.h"
#include "service/sync/sync_manager.h"

#include <QCoreApplication>
#include <QThreadPool>

namespace velmo {

void CommandAccount::waitForSession() const {
    awaitDone([this](const Done &done) { auth.whenRestored(done); });
}

void CommandAccount::waitForRequests() const {
    awaitDone([this](const Done &done) { sync.whenIdle(done); });
    keychainWorker.waitForDone(); // whether the session goes on is asked after the token was read
    http.waitUntilIdle();
    QCoreApplication::processEvents(); // what the last answers left to the main thread
}

} // namespace velmo
