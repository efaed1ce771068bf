#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmo {

class AuthManager;
class Calendar;
class SyncManager;

/// The account page: who is signed in and when their data was last brought in step, or the way to sign in. Main thread.
class AccountView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY isSignedInChanged)
    Q_PROPERTY(bool isSigningIn READ isSigningIn NOTIFY isSigningInChanged)
    Q_PROPERTY(QString userName READ userName NOTIFY userChanged)
    Q_PROPERTY(QString userEmail READ userEmail NOTIFY userChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString keyringMessage READ keyringMessage NOTIFY keyringMessageChanged)
    Q_PROPERTY(bool isSyncing READ isSyncing NOTIFY isSyncingChanged)
    Q_PROPERTY(QString syncStatus READ syncStatus NOTIFY syncStatusChanged)
    Q_PROPERTY(QString invitation READ invitation CONSTANT)
    Q_PROPERTY(QString signInText READ signInText CONSTANT)
    Q_PROPERTY(QString signInSymbol READ signInSymbol CONSTANT)
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY isShownChanged)

public:
    /// Whom the view works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        AuthManager &account;
        SyncManager &sync;
        const Calendar &calendar;
        bool isServiceOnThisMachine;
    };

    explicit AccountView(const Collaborators &collaborators);

    [[nodiscard]] bool isSignedIn() const;
    /// While the person is expected to answer in the browser.
    [[nodiscard]] bool isSigningIn() const;
    /// "Velmo User" where the record has no name.
    [[nodiscard]] QString userName() const;
    /// Empty where the record has none.
    [[nodiscard]] QString userEmail() const;
    /// Why the last sign-in failed; empty when there is nothing to say.
    [[nodiscard]] QString errorMessage() const;
    /// What it means that the keyring does not do its part, and why it does not; empty when it does.
    [[nodiscard]] QString keyringMessage() const;
    [[nodiscard]] bool isSyncing() const;
    /// "Synced 5 min. ago · Auto-sync on"; it keeps up with the time while the page is shown.
    [[nodiscard]] const QString &syncStatus() const { return m_syncStatus; }

    [[nodiscard]] QString invitation() const;
    [[nodiscard]] QString signInText() const;
    [[nodiscard]] QString signInSymbol() const;

    [[nodiscard]] bool isShown() const { return m_isShown; }
    void setShown(bool isShown);

    Q_INVOKABLE void signIn();
    Q_INVOKABLE void cancelSignIn();
    Q_INVOKABLE void signOut();
    Q_INVOKABLE void syncNow();

Q_SIGNALS:
    void isSignedInChanged();
    void isSigningInChanged();
    void userChanged();
    void errorMessageChanged();
    void keyringMessageChanged();
    void isSyncingChanged();
    void syncStatusChanged();
    void isShownChanged();

private:
    void tellSyncStatus();

    Collaborators m_with;
    QString m_syncStatus;
    bool m_isShown = false;
    MainQueue::Timer m_nextTelling;
    Lifetime m_lifetime;
};

} // namespace velmo
