#pragma once

#include "base/interface.h"
#include "service/wire/service_origin.h"

#include <QThreadPool>
#include <memory>

namespace velmo {

class Account;
class ApplicationBus;
class AudioLength;
class AuthManager;
class BrowserAuthentication;
class FolderWatch;
class HistoryStore;
class HttpClient;
class Keychain;
class MainQueue;
class PreferenceWatch;
class Preferences;
class StatisticsReporter;
class SyncManager;
class Synchronisation;
class TextProcessing;
class Transcriber;
class UrlOpener;
class UrlSchemeHandler;

/// The file that holds a preference domain of this user.
[[nodiscard]] QString preferencesPath(const QString &domain);

/// Where the desktop looks for what to start when this user logs in.
[[nodiscard]] QString autostartFolder();

/// The parts list: builds each component once, from real parts, when it is first asked for, and is the only
/// place that knows which parts those are. Main thread.
class Composition : private Unmovable {
public:
    /// The service the requests of this run go to.
    explicit Composition(ServiceOrigin origin);
    ~Composition();

    [[nodiscard]] bool isServiceOnThisMachine() const { return m_origin.isThisMachine(); }

    MainQueue &mainQueue();
    Preferences &preferences();
    /// Watches what other processes change; from its making on the history follows them.
    PreferenceWatch &preferenceWatch();
    HistoryStore &historyStore();
    AuthManager &authManager();
    SyncManager &syncManager();
    /// Where the desktop application is found, and where a sign-in on the command line is.
    ApplicationBus &applicationBus();
    ApplicationBus &signInBus();
    Account &account();
    StatisticsReporter &statistics();
    Synchronisation &synchronisation();
    HttpClient &httpClient();
    Transcriber &transcriptionClient();
    TextProcessing &textProcessor();
    const AudioLength &audioLength();

    /// Hands an address of Velmo's own scheme to the sign-in that waits for it.
    void deliverCallback(const QString &address);
    /// Sign-ins go on where no browser can be opened: the person is told the address.
    void signInWithoutBrowser();

    /// Waits, in the event loop, until it is known whether somebody is signed in.
    void waitForSession();

    /// Waits until every request begun has its answer, and the answer its effect, for a process that is about to end.
    void waitForRequests();

private:
    BrowserAuthentication &browserAuthentication();
    std::unique_ptr<AuthManager> makeAuthManager();
    void watchPreferences();
    void installUrlHandler();

    // In this order, so that each part ends before those it uses.
    const ServiceOrigin m_origin;
    std::unique_ptr<MainQueue> m_mainQueue;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<PreferenceWatch> m_preferenceWatch;
    std::unique_ptr<FolderWatch> m_folderWatch;
    std::unique_ptr<HistoryStore> m_historyStore;
    std::unique_ptr<AudioLength> m_audioLength;
    std::unique_ptr<Keychain> m_keychain;
    std::unique_ptr<UrlOpener> m_urlOpener;
    std::unique_ptr<UrlSchemeHandler> m_urlSchemeHandler;
    std::unique_ptr<BrowserAuthentication> m_browserAuthentication;
    std::unique_ptr<ApplicationBus> m_applicationBus;
    std::unique_ptr<ApplicationBus> m_signInBus;
    QThreadPool m_keychainWorker;
    QThreadPool m_syncWorker;
    std::unique_ptr<HttpClient> m_httpClient;
    std::unique_ptr<AuthManager> m_authManager;
    std::unique_ptr<SyncManager> m_syncManager;
    std::unique_ptr<Transcriber> m_transcriptionClient;
    std::unique_ptr<TextProcessing> m_textProcessor;
};

} // namespace velmo
