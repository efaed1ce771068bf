#include "app/composition/composition.h"

#include "base/log.h"
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
#include "service/sync/sync_manager.h"
#include "service/transcription/transcription_client.h"
#include "store/history_store.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "store/sqlite_preferences.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
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

Composition::Composition(ServiceOrigin origin) : m_origin(std::move(origin)) {
    m_keychainWorker.setMaxThreadCount(1);
    m_syncWorker.setMaxThreadCount(1);
}

Composition::~Composition() = default;

MainQueue &Composition::mainQueue() {
    return ensure(m_mainQueue, [] { return std::make_unique<QtMainQueue>(); });
}

Preferences &Composition::preferences() {
    return ensure(m_preferences,
                  [] { return std::make_unique<SqlitePreferences>(preferencesPath(kPreferences)); });
}

HistoryStore &Composition::historyStore() {
    return ensure(m_historyStore,
                  [this] { return std::make_unique<HistoryStore>(preferences(), mainQueue()); });
}

PreferenceWatch &Composition::preferenceWatch() {
    if (!m_preferenceWatch) {
        m_preferenceWatch = std::make_unique<PreferenceWatch>(preferences(), mainQueue());
        watchPreferences();
    }
    return *m_preferenceWatch;
}

void Composition::watchPreferences() {
    m_preferenceWatch->watch(HistoryStore::storageKey);
    QObject::connect(m_preferenceWatch.get(), &PreferenceWatch::changed, &historyStore(),
                     [this](const QString &key) {
                         if (key == HistoryStore::storageKey)
                             historyStore().refresh();
                     });
    const QFileInfo file(preferencesPath(kPreferences));
    // A change that changes nothing makes the file, and the folder to watch, where there is none.
    preferences().change(keys::deviceId, [](const auto &stored) { return stored; });
    m_folderWatch = std::make_unique<InotifyFolderWatch>();
    if (!m_folderWatch->watch(file.path(), file.fileName(), [this] { m_preferenceWatch->noteWrite(); }))
        log(LogTag::Prefs, u"Changes of other processes cannot be noticed"_s);
}

AuthManager &Composition::authManager() {
    return ensure(m_authManager, [this] { return makeAuthManager(); });
}

std::unique_ptr<AuthManager> Composition::makeAuthManager() {
    m_keychain = std::make_unique<SecretServiceKeychain>(u"Velmo session"_s);
    const QString authorizationOrigin = QStringLiteral(VELMO_AUTHORIZATION_ORIGIN);
    auto auth = std::make_unique<AuthManager>(
        m_origin, authorizationOrigin.isEmpty() ? m_origin.baseURL() : authorizationOrigin,
        AuthManager::Collaborators{mainQueue(), m_keychainWorker, preferences(), *m_keychain,
                                   browserAuthentication(), httpClient()});
    auth->onSignedIn = [this] { syncManager().syncAll(); };
    QObject::connect(auth.get(), &AuthManager::isLoadingChanged, auth.get(), [this] {
        if (authManager().isLoading())
            installUrlHandler();
    });
    return auth;
}

void Composition::installUrlHandler() {
    auto &handler = ensure(m_urlSchemeHandler, [] { return std::make_unique<UrlSchemeHandler>(); });
    if (const auto outcome = handler.install(QCoreApplication::applicationFilePath()); !outcome)
        log(LogTag::Auth, outcome.error());
}

BrowserAuthentication &Composition::browserAuthentication() {
    return ensure(m_browserAuthentication, [this] {
        m_urlOpener = std::make_unique<XdgUrlOpener>();
        return std::make_unique<BrowserAuthentication>(*m_urlOpener);
    });
}

void Composition::deliverCallback(const QString &address) {
    browserAuthentication().deliver(address);
}

void Composition::signInWithoutBrowser() {
    browserAuthentication().goOnWithoutBrowser();
}

SyncManager &Composition::syncManager() {
    return ensure(m_syncManager, [this] {
        return std::make_unique<SyncManager>(
            m_origin, SyncManager::Collaborators{mainQueue(), m_syncWorker, preferences(), historyStore(),
                                                 authManager(), authManager(), httpClient()});
    });
}

ApplicationBus &Composition::applicationBus() {
    return ensure(m_applicationBus, [] { return std::make_unique<SessionBus>(SessionBus::applicationName); });
}

ApplicationBus &Composition::signInBus() {
    return ensure(m_signInBus, [] { return std::make_unique<SessionBus>(SessionBus::signInName); });
}

Account &Composition::account() {
    return authManager();
}

StatisticsReporter &Composition::statistics() {
    return syncManager();
}

Synchronisation &Composition::synchronisation() {
    return syncManager();
}

HttpClient &Composition::httpClient() {
    return ensure(m_httpClient, [] { return std::make_unique<HttpClient>(); });
}

Transcriber &Composition::transcriptionClient() {
    return ensure(m_transcriptionClient, [this] {
        return std::make_unique<TranscriptionClient>(m_origin, httpClient(), authManager(), preferences());
    });
}

TextProcessing &Composition::textProcessor() {
    return ensure(m_textProcessor, [this] {
        return std::make_unique<TextProcessor>(m_origin, httpClient(), authManager(), preferences());
    });
}

const AudioLength &Composition::audioLength() {
    return ensure(m_audioLength, makeSndfileAudioLength);
}

void Composition::waitForSession() {
    QEventLoop untilRestored;
    bool isRestored = false;
    authManager().whenRestored([&] {
        isRestored = true;
        untilRestored.quit();
    });
    if (!isRestored)
        untilRestored.exec();
}

void Composition::waitForRequests() {
    if (m_syncManager) {
        QEventLoop untilIdle;
        m_syncManager->whenIdle([&] { untilIdle.quit(); });
        untilIdle.exec();
    }
    m_keychainWorker.waitForDone(); // whether the session goes on is asked after the token was read
    if (m_httpClient)
        m_httpClient->waitUntilIdle();
    QCoreApplication::processEvents(); // what the last answers left to the main thread
}

} // namespace velmo
