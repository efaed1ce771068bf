#pragma once

#include "service/nobody_signed_in.h"
#include "service/service_origin.h"

#include <memory>

namespace velmo {

class AudioLength;
class HistoryStore;
class HttpClient;
class MainQueue;
class Preferences;
class TextProcessing;
class Transcriber;

/// The file that holds a preference domain of this user.
[[nodiscard]] QString preferencesPath(const QString &domain);

/// The parts list: builds each component once, from real parts, when it is first asked for, and is the only
/// place that knows which parts those are. Main thread.
class Composition {
public:
    /// The service the requests of this run go to.
    explicit Composition(ServiceOrigin origin);
    Composition(const Composition &) = delete;
    Composition &operator=(const Composition &) = delete;
    ~Composition();

    MainQueue &mainQueue();
    Preferences &preferences();
    HistoryStore &historyStore();
    Account &account();
    StatisticsReporter &statistics();
    Synchronisation &synchronisation();
    HttpClient &httpClient();
    Transcriber &transcriptionClient();
    TextProcessing &textProcessor();
    const AudioLength &audioLength();

    /// Waits until every request begun has its answer, for a process that is about to end.
    void waitForRequests();

private:
    // In this order, so that what answers requests ends before what the answers reach.
    const ServiceOrigin m_origin;
    std::unique_ptr<MainQueue> m_mainQueue;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<HistoryStore> m_historyStore;
    std::unique_ptr<AudioLength> m_audioLength;
    NobodySignedIn m_account;
    std::unique_ptr<HttpClient> m_httpClient;
    std::unique_ptr<Transcriber> m_transcriptionClient;
    std::unique_ptr<TextProcessing> m_textProcessor;
};

} // namespace velmo
