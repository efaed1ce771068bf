#include "app/composition/core_parts.h"

#include "app/command_line/commands.h"
#include "app/process/preference_following.h"
#include "base/qt_main_queue.h"
#include "dictation/processing/text_processor.h"
#include "platform/linux/dbus/session_bus.h"
#include "platform/linux/inotify/inotify_folder_watch.h"
#include "platform/linux/secret_service/secret_service_keychain.h"
#include "platform/linux/sndfile/sndfile_audio_length.h"
#include "platform/linux/xdg/browser_authentication.h"
#include "platform/linux/xdg/url_scheme_handler.h"
#include "platform/linux/xdg/xdg_url_opener.h"
#include "service/account/auth_manager.h"
#include "service/http/http_client.h"
#include "service/status/service_status_client.h"
#include "service/status/service_watch.h"
#include "service/sync/sync_manager.h"
#include "service/transcription/transcription_client.h"
#include "store/history_store.h"
#include "store/preference_watch.h"
#include "store/sqlite_preferences.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const QString kPreferences = u"preferences"_s;

/// The part, built by `make` where that has not been done.
template <class Part, class Make>
Part &ensure(std::unique_ptr<Part> &part, Make make) {
    if (!part)
        part = make();
    return *part;
}

/// A relative XDG_CONFIG_HOME does not count (a rule of the XDG base directories); Qt would take it.
QString configDirectory() {
    const QString location = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir::isAbsolutePath(location) ? location : QDir::homePath() + u"/.config"_s;
}

} // namespace

QString preferencesPath(const QString &domain) {
    return u"%1/velmo/%2.sqlite"_s.arg(configDirectory(), domain);
}

QString autostartFolder() {
    return configDirectory() + u"/autostart"_s;
}

CoreParts::CoreParts(ServiceOrigin origin) : m_origin(std::move(origin)) {
    m_keychainWorker.setMaxThreadCount(1);
    m_syncWorker.setMaxThreadCount(1);
}

CoreParts::~CoreParts() = default;

MainQueue &CoreParts::mainQueue() {
    return ensure(m_mainQueue, [] { return std::make_unique<QtMainQueue>(); });
}

Preferences &CoreParts::preferences() {
    return ensure(m_preferences,
                  [] { return std::make_unique<SqlitePreferences>(preferencesPath(kPreferences)); });
}

HistoryStore &CoreParts::historyStore() {
    return ensure(m_historyStore,
                  [this] { return std::make_unique<HistoryStore>(preferences(), mainQueue()); });
}

PreferenceWatch &CoreParts::preferenceWatch() {
    if (!m_preferenceWatch) {
        m_preferenceWatch = std::make_unique<PreferenceWatch>(preferences(), mainQueue());
        m_folderWatch = std::make_unique<InotifyFolderWatch>();
        followOtherProcesses({preferences(), preferencesPath(kPreferences), *m_preferenceWatch,
                              *m_folderWatch, historyStore()});
    }
    return *m_preferenceWatch;
}

AuthManager &CoreParts::authManager() {
    return ensure(m_authManager, [this] { return makeAuthManager(); });
}

std::unique_ptr<AuthManager> CoreParts::makeAuthManager() {
    m_keychain = std::make_unique<SecretServiceKeychain>(u"Velmo session"_s);
    const QString authorizationOrigin = QStringLiteral(VELMO_AUTHORIZATION_ORIGIN);
    auto auth = std::make_unique<AuthManager>(
        m_origin, authorizationOrigin.isEmpty() ? m_origin.baseURL() : authorizationOrigin,
        AuthManager::Collaborators{mainQueue(), m_keychainWorker, preferences(), *m_keychain,
                                   browserAuthentication(), httpClient()});
    auth->onSignedIn = [this] { syncManager().syncAll(); };
    return auth;
}

BrowserAuthentication &CoreParts::browserAuthentication() {
    return ensure(m_browserAuthentication, [this] {
        m_urlOpener = std::make_unique<XdgUrlOpener>();
        m_urlSchemeHandler = std::make_unique<UrlSchemeHandler>();
        return std::make_unique<BrowserAuthentication>(*m_urlOpener, [this] {
            return m_urlSchemeHandler->install(QCoreApplication::applicationFilePath());
        });
    });
}

SyncManager &CoreParts::syncManager() {
    return ensure(m_syncManager, [this] {
        return std::make_unique<SyncManager>(
            m_origin, SyncManager::Collaborators{mainQueue(), m_syncWorker, preferences(), historyStore(),
                                                 authManager(), authManager(), httpClient()});
    });
}

ApplicationBus &CoreParts::applicationBus() {
    return ensure(m_applicationBus, [] { return std::make_unique<SessionBus>(SessionBus::applicationName); });
}

ApplicationBus &CoreParts::signInBus() {
    return ensure(m_signInBus, [] { return std::make_unique<SessionBus>(SessionBus::signInName); });
}

HttpClient &CoreParts::httpClient() {
    return ensure(m_httpClient, [] { return std::make_unique<HttpClient>(); });
}

ServiceStatusClient &CoreParts::serviceStatus() {
    return ensure(m_serviceStatus,
                  [this] { return std::make_unique<ServiceStatusClient>(m_origin, httpClient()); });
}

ServiceWatch &CoreParts::serviceWatch() {
    return ensure(m_serviceWatch,
                  [this] { return std::make_unique<ServiceWatch>(serviceStatus(), mainQueue()); });
}

Transcriber &CoreParts::transcriptionClient() {
    return ensure(m_transcriptionClient, [this] {
        return std::make_unique<TranscriptionClient>(m_origin, httpClient(), authManager(), preferences());
    });
}

TextProcessing &CoreParts::textProcessor() {
    return ensure(m_textProcessor, [this] {
        return std::make_unique<TextProcessor>(m_origin, httpClient(), authManager(), preferences());
    });
}

const AudioLength &CoreParts::audioLength() {
    return ensure(m_audioLength, makeSndfileAudioLength);
}

CommandAccount CoreParts::commandAccount() {
    return {authManager(), syncManager(), httpClient(), m_keychainWorker};
}

FileDictationCollaborators CoreParts::fileDictation() {
    return {mainQueue(),     preferences(),  audioLength(),   transcriptionClient(),
            textProcessor(), historyStore(), commandAccount()};
}

SignInCollaborators CoreParts::signIn() {
    browserAuthentication().goOnWithoutBrowser(); // the person is told the address
    return {mainQueue(), applicationBus(), signInBus(),
            std::bind_front(&BrowserAuthentication::deliver, &browserAuthentication()),
            std::bind_front(&CoreParts::commandAccount, this)};
}

CommandLine CoreParts::commandLine() {
    const auto lazily = [this](auto part) { return std::bind_front(part, this); };
    const auto preferences = lazily(&CoreParts::preferences);
    const auto application = lazily(&CoreParts::applicationBus);
    const auto account = lazily(&CoreParts::commandAccount);
    CommandLine line;
    line.addressees = {lazily(&CoreParts::signInBus), application};
    line.commands = {
        dictateCommand(lazily(&CoreParts::fileDictation)),
        cleanCommand(preferences),
        historyCommand(lazily(&CoreParts::historyStore)),
        signInCommand(lazily(&CoreParts::signIn)),
        signOutCommand(application, lazily(&CoreParts::authManager)),
        syncCommand(application, account),
        defaultsCommand(preferences),
    };
    const auto remote = remoteCommands(application);
    line.commands.insert(line.commands.end(), remote.begin(), remote.end());
    return line;
}

} // namespace velmo
