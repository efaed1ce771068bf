#pragma once

#include "base/interface.h"
#include "localservice/http/endpoint.h"
#include "localservice/models/model_installer.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>

namespace velmo::localservice {

/// Gets speech models in the background, one at a time. Any thread.
class ModelDownloads : private Unmovable {
public:
    struct Running {
        QString name;
        DownloadProgress progress;
        double bytesPerSecond = 0;
    };

    /// From their publishers, or, for tests, from another address.
    explicit ModelDownloads(const ModelStore &store, QString address = {})
        : m_store(store), m_address(std::move(address)) {}
    /// Ends what is running; what has come stays for the next time.
    ~ModelDownloads();

    /// Begins; refused when the catalogue has none of that name, or another is on its way.
    [[nodiscard]] Result<void, Refusal> get(const QString &name);
    void cancel();

    [[nodiscard]] std::optional<Running> running() const;
    /// Why the last one ended without a model; null when there is nothing to say.
    [[nodiscard]] QString failure() const;

private:
    using Clock = std::chrono::steady_clock;

    void run(const CatalogueModel &model);
    [[nodiscard]] bool note(const DownloadProgress &progress);

    const ModelStore m_store;
    const QString m_address;
    std::atomic<bool> m_isCancelled = false;
    mutable std::mutex m_mutex; // of what follows
    std::optional<Running> m_running;
    Clock::time_point m_began;
    std::optional<qint64> m_before; ///< Bytes that were there at the beginning.
    QString m_failure;
    std::thread m_thread;
};

} // namespace velmo::localservice
