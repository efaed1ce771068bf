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

using namespace Qt::StringLiterals;

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
    if (reply.status != kOk || !object || !object->value("user"_L1).isObject())
        return std::nullopt;
    const auto user = decodeUser(object->value("user"_L1).toObject());
    return user ? std::optional(*user) : std::nullopt;
}

} // namespace

template <class Callback>
auto AuthManager::onMain(Callback callback) {
    return velmo::onMain(m_with.queue, m_lifetime, std::move(callback));
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
        log(LogTag::Auth, u"Failed to build Apple OAuth URL"_s);
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
    return m_origin.baseURL() + u"/api/auth/apple/callback"_s;
}

QString AuthManager::addressFor(const QString &state) const {
    return m_authorizationOrigin + u"/auth/authorize?"_s +
           queryText({{"client_id", appleServicesID},
                      {"redirect_uri", appleCallbackURL()},
                      {"response_type", u"code id_token"_s},
                      {"scope", u"name email"_s},
                      {"response_mode", u"form_post"_s},
                      {"state", state}});
}

void AuthManager::webSessionEnded(const WebAuthentication::Outcome &outcome) {
    using Kind = WebAuthenticationFailure::Kind;
    if (outcome && *outcome) {
        handleCallback(**outcome);
        return;
    }
    if (outcome)
        log(LogTag::Auth, u"No callback URL received"_s);
    else if (outcome.error().kind == Kind::NotStarted)
        log(LogTag::Auth, u"Failed to start web auth session"_s);
    else if (outcome.error().kind == Kind::Cancelled)
        log(LogTag::Auth, u"User cancelled sign-in"_s);
    else
        log(LogTag::Auth, u"Web auth error: "_s + outcome.error().description);
    endAttempt();
}

void AuthManager::handleCallback(const QString &address) {
    const auto callback = readCallback(address, m_attempt.state);
    if (callback) {
        log(LogTag::Auth, u"Got Apple id_token, exchanging via /api/auth/apple..."_s);
        exchange(*callback);
    } else if (callback.error() == CallbackProblem::Unparseable) {
        log(LogTag::Auth, u"Failed to parse callback URL"_s);
        endAttempt(u"Sign-in failed — invalid callback. Please try again."_s);
    } else {
        log(LogTag::Auth, u"Missing id_token in callback URL"_s);
        endAttempt(u"Sign-in failed — no token received from Apple. Please try again."_s);
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
    log(LogTag::Auth, u"Signed in as "_s + user.email.value_or(user.id));
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
    log(LogTag::Auth, u"Signed out"_s);
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
        log(LogTag::Auth, u"Token expired, signing out"_s);
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
