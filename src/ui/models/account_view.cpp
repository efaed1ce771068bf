#include "ui/models/account_view.h"

#include "base/calendar.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"
#include "ui/models/platform_texts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// How long "how long ago" stays true: it counts in seconds for a minute, then in minutes, then in hours.
std::chrono::milliseconds untilAnotherText(std::chrono::system_clock::duration age) {
    const std::chrono::system_clock::duration longUnit = age < 1h ? 1min : 1h;
    const std::chrono::system_clock::duration unit = age < 1min ? 1s : longUnit;
    const auto rest = unit - std::max(age, std::chrono::system_clock::duration::zero()) % unit;
    return std::chrono::ceil<std::chrono::milliseconds>(rest);
}

} // namespace

AccountView::AccountView(const Collaborators &collaborators) : m_with(collaborators) {
    const AuthManager *account = &m_with.account;
    connect(account, &AuthManager::isLoggedInChanged, this, &AccountView::isSignedInChanged);
    connect(account, &AuthManager::isLoadingChanged, this, &AccountView::isSigningInChanged);
    connect(account, &AuthManager::currentUserChanged, this, &AccountView::userChanged);
    connect(account, &AuthManager::authErrorChanged, this, &AccountView::errorMessageChanged);
    for (const auto change : {&AuthManager::keychainFailureChanged, &AuthManager::isLoggedInChanged})
        connect(account, change, this, &AccountView::keyringMessageChanged);
    connect(&m_with.sync, &SyncManager::isSyncingChanged, this, &AccountView::isSyncingChanged);
    connect(&m_with.sync, &SyncManager::lastSyncDateChanged, this, &AccountView::tellSyncStatus);
    tellSyncStatus();
}

bool AccountView::isSignedIn() const {
    return m_with.account.isLoggedIn();
}

bool AccountView::isSigningIn() const {
    return m_with.account.isLoading();
}

QString AccountView::userName() const {
    const QString name = m_with.account.userName();
    return name.isEmpty() ? tr("Velmo User") : name;
}

QString AccountView::userEmail() const {
    return m_with.account.userEmail();
}

QString AccountView::errorMessage() const {
    return m_with.account.authError();
}

QString AccountView::keyringMessage() const {
    const QString reason = m_with.account.keychainFailure();
    if (reason.isNull())
        return {};
    return (isSignedIn() ? tr("Nothing is synchronised, and you will have to sign in again: %1")
                         : tr("Your session cannot be reached: %1"))
        .arg(reason);
}

bool AccountView::isSyncing() const {
    return m_with.sync.isSyncing();
}

QString AccountView::invitation() const {
    if (m_with.isServiceOnThisMachine)
        return platform_texts::localSignInInvitation();
    return tr("Sign in with your Apple ID to sync your dictionary and settings across your iPhone and Mac.");
}

QString AccountView::signInText() const {
    return m_with.isServiceOnThisMachine ? platform_texts::localSignIn() : tr("Sign in with Apple");
}

QString AccountView::signInSymbol() const {
    return m_with.isServiceOnThisMachine ? u"person.circle"_s : u"apple.logo"_s;
}

void AccountView::setShown(bool isShown) {
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    tellSyncStatus();
    Q_EMIT isShownChanged();
}

void AccountView::signIn() {
    m_with.account.signInWithApple();
}

void AccountView::cancelSignIn() {
    m_with.account.cancelSignIn();
}

void AccountView::signOut() {
    m_with.account.signOut();
}

void AccountView::syncNow() {
    m_with.sync.syncAll();
}

void AccountView::tellSyncStatus() {
    m_nextTelling.reset();
    const auto last = m_with.sync.lastSyncDate();
    const Date now = m_with.queue.now();
    const QString status = last ? tr("Synced %1 · Auto-sync on").arg(m_with.calendar.timeAgo(*last, now))
                                : tr("Auto-sync enabled");
    if (last && m_isShown)
        m_nextTelling =
            m_with.queue.after(untilAnotherText(now - *last), m_lifetime.guard([this] { tellSyncStatus(); }));
    if (status == m_syncStatus)
        return;
    m_syncStatus = status;
    Q_EMIT syncStatusChanged();
}

} // namespace velmo
