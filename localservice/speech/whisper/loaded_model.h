#pragma once

#include "base/result.h"
#include "localservice/http/endpoint.h"
#include "localservice/models/model_store.h"
#include "localservice/speech/whisper/whisper_model.h"

#include <QDateTime>
#include <chrono>
#include <functional>
#include <memory>

namespace velmo::localservice {

/// What a model in memory depends on.
struct ModelSurroundings {
    using Clock = std::chrono::steady_clock;

    /// The model for a language, or a sentence why there is none.
    std::function<Result<InstalledModel, QString>(const QString &language)> modelFor;
    std::function<qint64()> availableMemory; ///< In bytes; negative when it is not known.
    std::function<Clock::time_point()> now = Clock::now;
    Clock::duration idle = std::chrono::minutes(10); ///< After so long without work the memory is given back.
};

/// The one model in memory: loaded when it is needed, again when its file was replaced, given back when it was idle. Used by
/// one thread.
class LoadedModel {
public:
    using Clock = ModelSurroundings::Clock;

    explicit LoadedModel(ModelSurroundings surroundings) : m_surroundings(std::move(surroundings)) {}

    /// The model for a language; a refusal when it is gone, is none, or does not fit into the memory.
    [[nodiscard]] Result<WhisperModel *, Refusal> get(const QString &language);

    [[nodiscard]] bool isLoaded() const { return m_model != nullptr; }

    /// When it is given back if nobody gets it before; nothing when there is none.
    [[nodiscard]] std::optional<Clock::time_point> restsAt() const;
    void giveBack();

private:
    struct File {
        QString path;
        qint64 size = 0;
        QDateTime changed;

        bool operator==(const File &) const = default;
    };

    [[nodiscard]] Result<void, Refusal> load(const File &file, const QString &name);

    ModelSurroundings m_surroundings;
    std::unique_ptr<WhisperModel> m_model;
    File m_file; ///< Of the model.
    Clock::time_point m_lastUse;
};

/// What the kernel would give without swapping, in bytes; negative when it does not say.
[[nodiscard]] qint64 availableMemory();

} // namespace velmo::localservice
