#include "app/composition.h"

#include "base/qt_main_queue.h"
#include "platform/linux/sndfile_audio_length.h"
#include "service/http_client.h"
#include "service/transcription_client.h"
#include "store/history_store.h"
#include "store/sqlite_preferences.h"
#include "text/text_processor.h"

#include <QDir>
#include <QStandardPaths>

namespace velmo {

namespace {

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
    return QDir::isAbsolutePath(location) ? location : QDir::homePath() + QStringLiteral("/.config");
}

} // namespace

QString preferencesPath(const QString &domain) {
    return QStringLiteral("%1/velmo/%2.sqlite").arg(configDirectory(), domain);
}

Composition::Composition(ServiceOrigin origin) : m_origin(std::move(origin)) {}
Composition::~Composition() = default;

MainQueue &Composition::mainQueue() {
    return ensure(m_mainQueue, [] { return std::make_unique<QtMainQueue>(); });
}

Preferences &Composition::preferences() {
    return ensure(m_preferences, [] {
        return std::make_unique<SqlitePreferences>(preferencesPath(QStringLiteral("preferences")));
    });
}

HistoryStore &Composition::historyStore() {
    return ensure(m_historyStore,
                  [this] { return std::make_unique<HistoryStore>(preferences(), mainQueue()); });
}

Account &Composition::account() {
    return m_account;
}

StatisticsReporter &Composition::statistics() {
    return m_account;
}

Synchronisation &Composition::synchronisation() {
    return m_account;
}

HttpClient &Composition::httpClient() {
    return ensure(m_httpClient, [] { return std::make_unique<HttpClient>(); });
}

Transcriber &Composition::transcriptionClient() {
    return ensure(m_transcriptionClient, [this] {
        return std::make_unique<TranscriptionClient>(m_origin, httpClient(), m_account, preferences());
    });
}

TextProcessing &Composition::textProcessor() {
    return ensure(m_textProcessor, [this] {
        return std::make_unique<TextProcessor>(m_origin, httpClient(), m_account, preferences());
    });
}

const AudioLength &Composition::audioLength() {
    return ensure(m_audioLength, makeSndfileAudioLength);
}

void Composition::waitForRequests() {
    if (m_httpClient)
        m_httpClient->waitUntilIdle();
}

} // namespace velmo
