#pragma once

#include "base/lifetime.h"
#include "service/account/session_token.h"
#include "service/account/velmo_user.h"
#include "service/http/http_client.h"
#include "service/wire/service_origin.h"
#include "service/wire/session_interfaces.h"

#include <QObject>
#include <functional>
#include <vector>

class QThreadPool;

namespace velmo {

class Keychain;
class Preferences;
class WebAuthentication;
struct SignInCallback;
struct WebAuthenticationFailure;

/// Who is signed in. Runs a sign-in through the person's browser, keeps the session's token in the keychain and the
/// user record in the preferences, and forgets both at sign-out.
///
/// Published fields change on the main thread, one turn after the step that asked for it; every operation returns at
/// once. `authToken` may be called on any other thread. What was begun under another session (a reply that comes after
/// a sign-out) changes nothing.
class AuthManager final : public QObject, public TokenSource, public Account {
    Q_OBJECT
    Q_PROPERTY(bool isLoggedIn READ isLoggedIn NOTIFY isLoggedInChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString authError READ authError NOTIFY authErrorChanged)
    Q_PROPERTY(QString userName READ userName NOTIFY currentUserChanged)
    Q_PROPERTY(QString userEmail READ userEmail NOTIFY currentUserChanged)

public:
    /// The account of the keychain item, and how the identity provider knows the application.
    static constexpr QLatin1StringView keychainKey{"com.tarnwell.velmo.mac.authToken"};
    static constexpr QLatin1StringView appleServicesID{"com.tarnwell.velmo.web"};
    static constexpr QLatin1StringView callbackScheme{"velmo"};

    /// Whom the manager works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        QThreadPool &worker; ///< Of one thread: it waits for the keychain.
        Preferences &preferences;
        Keychain &keychain;
        WebAuthentication &webAuthentication;
        HttpClient &http;
    };

    /// Begins to read the stored session; `whenRestored` tells when that is done.
    /// @param authorizationOrigin where the authorisation page is: a scheme and a host.
    AuthManager(ServiceOrigin origin, QString authorizationOrigin, const Collaborators &collaborators);
    /// Waits until the keychain has done what it was asked for.
    ~AuthManager() override;

    [[nodiscard]] std::optional<QString> authToken() override { return m_token.read(); }
    void prepareToken() override { m_token.prepare(); }

    void whenRestored(const std::function<void()> &callback) override;

    /// Begins an attempt to sign in, in the place of one that still runs.
    Q_INVOKABLE void signInWithApple();
    /// The person gives the attempt up.
    Q_INVOKABLE void cancelSignIn();
    /// Forgets the session on this machine. What the person keeps here (dictionary, snippets, history) stays.
    Q_INVOKABLE void signOut();
    /// Has the service tell the user record anew, or that the session is over.
    void refreshUser();

    /// Called once somebody has signed in, after `isLoggedIn` became true.
    std::function<void()> onSignedIn;

    [[nodiscard]] bool isLoggedIn() const override { return m_isLoggedIn; }
    /// While an attempt runs.
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] const std::optional<VelmoUser> &currentUser() const { return m_currentUser; }
    /// Why the last attempt failed, for the person; null when there is nothing to say.
    [[nodiscard]] const QString &authError() const { return m_authError; }
    /// Null where the record has none.
    [[nodiscard]] QString userName() const;
    [[nodiscard]] QString userEmail() const;
    /// Why the keychain did not do what it was asked last, or does not have the session, as a sentence; null when all is
    /// well.
    [[nodiscard]] QString keychainFailure() const { return m_token.failure(); }
    /// The page of the attempt begun last, for who wants to open it by hand.
    [[nodiscard]] const QString &authorizationAddress() const { return m_attempt.address; }

Q_SIGNALS:
    void isLoggedInChanged();
    void isLoadingChanged();
    void currentUserChanged();
    void authErrorChanged();
    void keychainFailureChanged();
    /// The running attempt came to its end.
    void signInEnded(bool signedIn);
    /// The session is forgotten, and the keychain has answered: `keychainFailure` tells whether it still has the token.
    void signedOut();

private:
    struct Attempt {
        int number = 0;
        QString state;
        QString address; ///< Null when it could not be formed.
    };

    void restore();
    void publishRestored(int session, bool hasToken);
    [[nodiscard]] std::optional<VelmoUser> cachedUser() const;

    [[nodiscard]] QString appleCallbackURL() const;
    [[nodiscard]] QString addressFor(const QString &state) const;
    void webSessionEnded(const Result<std::optional<QString>, WebAuthenticationFailure> &outcome);
    void handleCallback(const QString &address);
    void exchange(const SignInCallback &callback);
    void abandonExchange();
    void exchangeEnded(const HttpOutcome &outcome);
    void beginSession(const VelmoUser &user);
    void endAttempt(const QString &error = QString(), bool signedIn = false);
    void refreshEnded(int session, const HttpOutcome &outcome);

    /// The callback made fit for other threads: it runs on the main thread, and not after the manager's end.
    template <class Callback>
    [[nodiscard]] auto onMain(Callback callback);
    /// As `onMain`, and not once another attempt has begun.
    template <class Callback>
    [[nodiscard]] auto onMainForAttempt(Callback callback);

    void setLoggedIn(bool loggedIn);
    void setLoading(bool loading);
    void setCurrentUser(const std::optional<VelmoUser> &user);
    void setAuthError(const QString &error);

    const ServiceOrigin m_origin;
    const QString m_authorizationOrigin;
    Collaborators m_with;
    std::optional<VelmoUser> m_currentUser;
    bool m_isLoggedIn = false;
    bool m_isLoading = false;
    QString m_authError;
    bool m_isRestored = false;
    std::vector<std::function<void()>> m_waitingForRestore;
    Attempt m_attempt;
    bool m_isExchanging = false; ///< The service has the identity token and has not answered yet.
    Lifetime m_lifetime;
    SessionToken m_token; // last: its end waits for the worker, whose tasks use the rest
};

} // namespace velmo
