#pragma once

#include "base/lifetime.h"
#include "platform/application_bus.h"

#include <QObject>
#include <vector>

namespace velmo {

class AuthManager;
class DictationControls;
class SyncManager;

/// What the running application does for other processes of the session: `velmo toggle`, a second start, an address
/// that the browser hands over. Main thread.
class ApplicationCommands final : public QObject, public ApplicationRequests {
    Q_OBJECT

public:
    /// Whom the commands are for; all of them outlive this object.
    struct Collaborators {
        DictationControls &controls;
        AuthManager &auth;
        SyncManager &sync;
    };

    explicit ApplicationCommands(const Collaborators &collaborators);

    /// Takes an address of Velmo's own scheme.
    std::function<void(const QString &address)> onAddress;
    /// Shows the main window.
    std::function<void()> onShow;
    /// Ends the application in order.
    std::function<void()> onQuit;

    void activate() override;
    void open(const QStringList &addresses) override;
    void run(const QStringList &words, Reply reply) override;

private:
    void start(const Reply &reply);
    void stop(const Reply &reply);
    void toggle(const Reply &reply);
    void cancel(const Reply &reply);
    void status(const Reply &reply);
    void show(const Reply &reply);
    void quit(const Reply &reply);
    void sync(const Reply &reply);
    void syncAccount(const Reply &reply);
    void signIn(const Reply &reply);
    void waitForSignIn(const Reply &reply);
    void cancelSignIn(const Reply &reply);
    void signOut(const Reply &reply);
    void signInEnded(bool signedIn);
    void signedOut();

    Collaborators m_with;
    bool m_signInRuns = false;
    CommandOutcome m_lastSignIn;
    std::vector<Reply> m_waitingForSignIn;
    std::vector<Reply> m_waitingForSignOut;
    Lifetime m_lifetime;
};

} // namespace velmo
