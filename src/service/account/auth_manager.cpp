#include "service/account/auth_manager.h"

#include "base/json.h"
#include "base/log.h"
#include "base/uuid.h"
#include "platform/web_authentication.h"
#include "service/account/sign_in_callback.h"
#include "service/account/token_exchange.h"
#include "service/wire/service_request.h"
#include "store/preference_keys.h"
#include "store/preferences.h"

#include <QThreadPool>
#include <QUrl>

namespace velmo {

namespace {

constexpr int kOk = 200;
constexpr int kUnauthorized = 401;

QString queryText(std::initializer_list<std::pair<const char *, QString>> items) {
    QStringList texts;
    for (const auto &[name, value] : items)
        texts.append(QLatin1StringView(name) + u'=' + QString::fromLatin1(QUrl::toPercentEncoding(value)));
    return texts.join(u'&');
}

bool isPageAddress(const QString &address) {
    const QUrl url(address, QUrl::StrictMode);
    return url.isValid() && !url.host().isEmpty();
}

/// The record in the reply to a refresh, where it has one.
std::optional<VelmoUser> userIn(const HttpReply &reply) {
    const auto object = json::object(reply.body);
    if (reply.status != kOk || !object || !object->value(QLatin1StringView("user")).isObject())
        return std::nullopt;
    const auto user = decodeUser(object->value(QLatin1StringView("user")).toObject());
    return user ? std::optional(*user) : std::nullopt;
}

} // namespace

template <class Callback>
auto AuthManager::onMain(Callback callback) {
    return [&queue = m_with.queue, run = m_lifetime.guard(std::move(callback))](auto... arguments) {
        queue.post([run, arguments...]() mutable { run(arguments...); });
    };
}

template <class Callback>
auto AuthManager::onMainForAttempt(Callback callback) {
    return onMain(
        [this, attempt = m_attempt.number, callback = std::move(callback)](const auto &...arguments) {
            if (attempt == m_attempt.number)
                callback(arguments...);
        });
}

AuthManager::AuthManager(ServiceOrigin origin, QString authorizationOrigin,
                         const Collaborators &collaborators)
    : m_origin(std::move(origin)),
      m_authorizationOrigin(std::move(authorizationOrigin)),
      m_with(collaborators),
      m_token(collaborators.keychain, keychainKey, collaborators.worker, collaborators.queue,
              onMain([this] { Q_EMIT keychainFailureChanged(); })) {
    restore();
}

AuthManager::~AuthManager() = default;

void AuthManager::whenRestored(const std::function<void()> &callback) {
    if (m_isRestored && !m_isLoggedIn && !keychainFailure().isNull())
        restore();
    if (m_isRestored)
        callback();
    else
        m_waitingForRestore.push_back(callback);
}

void AuthManager::restore() {
    m_isRestored = false;
    m_with.worker.start([this, session = m_token.session()] {
        const bool hasToken = m_token.readOnWorker().has_value();
        onMain([this, session, hasToken] { publishRestored(session, hasToken); })();
    });
}

void AuthManager::publishRestored(int session, bool hasToken) {
    if (hasToken && session == m_token.session()) {
        setCurrentUser(cachedUser());
        setLoggedIn(true);
        refreshUser();
    }
    m_isRestored = true;
    for (const auto &callback : std::exchange(m_waitingForRestore, {}))
        callback();
}

std::optional<VelmoUser> AuthManager::cachedUser() const {
    const auto stored = json::object(m_with.preferences.data(keys::user).value_or(QByteArray()));
    const auto user = decodeUser(stored.value_or(QJsonObject()));
    return user ? std::optional(*user) : std::nullopt;
}

void AuthManager::signInWithApple() {
    const QString state = newUpperUuid();
    m_attempt = {m_attempt.number + 1, state, addressFor(state)};
    m_isExchanging = false;
    onMain([this] {
        setLoading(true);
        setAuthError(QString());
    })();
    if (!isPageAddress(m_attempt.address)) {
        log(LogTag::Auth, QStringLiteral("Failed to build Apple OAuth URL"));
        endAttempt();
        return;
    }
    m_with.webAuthentication.start(
        m_attempt.address, callbackScheme,
        onMainForAttempt([this](const WebAuthentication::Outcome &outcome) { webSessionEnded(outcome); }));
}

void AuthManager::cancelSignIn() {
    m_with.webAuthentication.cancel();
    abandonExchange();
}

/// Whoever cancels or signs out while the service thinks about the sign-in does not want its answer any more.
void AuthManager::abandonExchange() {
    if (!std::exchange(m_isExchanging, false))
        return;
    ++m_attempt.number;
    endAttempt();
}

QString AuthManager::appleCallbackURL() const {
    return m_origin.baseURL() + QStringLiteral("/api/auth/apple/callback");
}

QString AuthManager::addressFor(const QString &state) const {
    return m_authorizationOrigin + QStringLiteral("/auth/authorize?") +
           queryText({{"client_id", appleServicesID},
                      {"redirect_uri", appleCallbackURL()},
                      {"response_type", QStringLiteral("code id_token")},
                      {"scope", QStringLiteral("name email")},
                      {"response_mode", QStringLiteral("form_post")},
                      {"state", state}});
}

void AuthManager::webSessionEnded(const WebAuthentication::Outcome &outcome) {
    using Kind = WebAuthenticationFailure::Kind;
    if (outcome && *outcome) {
        handleCallback(**outcome);
        return;
    }
    if (outcome)
        log(LogTag::Auth, QStringLiteral("No callback URL received"));
    else if (outcome.error().kind == Kind::NotStarted)
        log(LogTag::Auth, QStringLiteral("Failed to start web auth session"));
    else if (outcome.error().kind == Kind::Cancelled)
        log(LogTag::Auth, QStringLiteral("User cancelled sign-in"));
    else
        log(LogTag::Auth, QStringLiteral("Web auth error: ") + outcome.error().description);
    endAttempt();
}

void AuthManager::handleCallback(const QString &address) {
    const auto callback = readCallback(address, m_attempt.state);
    if (callback) {
        log(LogTag::Auth, QStringLiteral("Got Apple id_token, exchanging via /api/auth/apple..."));
        exchange(*callback);
    } else if (callback.error() == CallbackProblem::Unparseable) {
        log(LogTag::Auth, QStringLiteral("Failed to parse callback URL"));
        endAttempt(QStringLiteral("Sign-in failed — invalid callback. Please try again."));
    } else {
        log(LogTag::Auth, QStringLiteral("Missing id_token in callback URL"));
        endAttempt(QStringLiteral("Sign-in failed — no token received from Apple. Please try again."));
    }
}

void AuthManager::exchange(const SignInCallback &callback) {
    m_isExchanging = true;
    m_with.http.send(serviceRequest(RequestKind::TokenExchange, m_origin, {}, {exchangeBody(callback)}),
                     onMainForAttempt([this](const HttpOutcome &outcome) { exchangeEnded(outcome); }));
}

void AuthManager::exchangeEnded(const HttpOutcome &outcome) {
    m_isExchanging = false;
    const auto session = exchangeResult(outcome);
    if (!session) {
        log(LogTag::Auth, session.error().logLine);
        endAttempt(session.error().message);
        return;
    }
    m_with.worker.start([this, session = *session, attempt = m_attempt.number] {
        const int number = m_token.store(session.token);
        onMain([this, attempt, number, user = session.user] {
            const bool isCurrent = number == m_token.session(); // or they have signed out since
            if (isCurrent)
                beginSession(user);
            if (attempt == m_attempt.number)
                endAttempt(QString(), isCurrent);
        })();
    });
}

void AuthManager::beginSession(const VelmoUser &user) {
    m_with.preferences.set(keys::user, encodeUser(user));
    setAuthError(QString());
    setCurrentUser(user);
    setLoggedIn(true);
    log(LogTag::Auth, QStringLiteral("Signed in as ") + user.email.value_or(user.id));
    if (onSignedIn)
        onSignedIn();
}

void AuthManager::endAttempt(const QString &error, bool signedIn) {
    onMainForAttempt([this, error, signedIn] {
        if (!error.isNull())
            setAuthError(error);
        setLoading(false);
        Q_EMIT signInEnded(signedIn);
    })();
}

void AuthManager::signOut() {
    abandonExchange();
    m_token.forget(onMain([this] { Q_EMIT signedOut(); }));
    m_with.preferences.remove(keys::user);
    onMain([this] {
        setCurrentUser(std::nullopt);
        setLoggedIn(false);
    })();
    log(LogTag::Auth, QStringLiteral("Signed out"));
}

void AuthManager::refreshUser() {
    m_with.worker.start([this] {
        const int session = m_token.session();
        const auto token = m_token.readOnWorker();
        if (!token)
            return;
        m_with.http.send(
            serviceRequest(RequestKind::AccountRefresh, m_origin, {token, {}, {}}, {}),
            onMain([this, session](const HttpOutcome &outcome) { refreshEnded(session, outcome); }));
    });
}

void AuthManager::refreshEnded(int session, const HttpOutcome &outcome) {
    if (!outcome || session != m_token.session())
        return;
    if (outcome->status == kUnauthorized) {
        log(LogTag::Auth, QStringLiteral("Token expired, signing out"));
        signOut();
    } else if (const auto user = userIn(*outcome)) {
        m_with.preferences.set(keys::user, encodeUser(*user));
        setCurrentUser(user);
    }
}

QString AuthManager::userName() const {
    return m_currentUser ? m_currentUser->name.value_or(QString()) : QString();
}

QString AuthManager::userEmail() const {
    return m_currentUser ? m_currentUser->email.value_or(QString()) : QString();
}

void AuthManager::setLoggedIn(bool loggedIn) {
    if (std::exchange(m_isLoggedIn, loggedIn) != loggedIn)
        Q_EMIT isLoggedInChanged();
}

void AuthManager::setLoading(bool loading) {
    if (std::exchange(m_isLoading, loading) != loading)
        Q_EMIT isLoadingChanged();
}

void AuthManager::setCurrentUser(const std::optional<VelmoUser> &user) {
    if (std::exchange(m_currentUser, user) != user)
        Q_EMIT currentUserChanged();
}

void AuthManager::setAuthError(const QString &error) {
    if (std::exchange(m_authError, error) != error)
        Q_EMIT authErrorChanged();
}

} // namespace velmo
