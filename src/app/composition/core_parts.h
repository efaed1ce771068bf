#pragma once

#include "app/command_line/command_line.h"
#include "base/interface.h"
#include "service/wire/service_origin.h"

#include <QThreadPool>
#include <memory>

namespace velmo {

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
class ServiceStatusClient;
class ServiceWatch;
class SyncManager;
class TextProcessing;
class Transcriber;
class UrlOpener;
class UrlSchemeHandler;
struct CommandAccount;
struct FileDictationCollaborators;
struct SignInCollaborators;

/// The file that holds a preference domain of this user.
[[nodiscard]] QString preferencesPath(const QString &domain);

/// Where the desktop looks for what to start when this user logs in.
[[nodiscard]] QString autostartFolder();

/// The parts list of every `velmo`: makes each part once, from real ones, when it is first asked for, so that a command
/// makes no more than it uses. Main thread.
class CoreParts : private Unmovable {
public:
    /// The service the requests of this run go to.
    explicit CoreParts(ServiceOrigin origin);
    ~CoreParts();

    [[nodiscard]] bool isServiceOnThisMachine() const { return m_origin.isThisMachine(); }

    MainQueue &mainQueue();
    Preferences &preferences();
    /// From its making on this process follows what others change.
    PreferenceWatch &preferenceWatch();
    HistoryStore &historyStore();
    AuthManager &authManager();
    SyncManager &syncManager();
    BrowserAuthentication &browserAuthentication();
    /// Where the desktop application is found, and where a sign-in on the command line is.
    ApplicationBus &applicationBus();
    ApplicationBus &signInBus();
    ServiceStatusClient &serviceStatus();
    ServiceWatch &serviceWatch();
    Transcriber &transcriptionClient();
    TextProcessing &textProcessor();
    const AudioLength &audioLength();

    [[nodiscard]] CommandAccount commandAccount();
    /// The commands, over the parts they use.
    [[nodiscard]] CommandLine commandLine();

private:
    HttpClient &httpClient();
    std::unique_ptr<AuthManager> makeAuthManager();
    [[nodiscard]] FileDictationCollaborators fileDictation();
    [[nodiscard]] SignInCollaborators signIn();

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
    std::unique_ptr<ServiceStatusClient> m_serviceStatus;
    std::unique_ptr<ServiceWatch> m_serviceWatch;
    std::unique_ptr<Transcriber> m_transcriptionClient;
    std::unique_ptr<TextProcessing> m_textProcessor;
};

} // namespace velmo
