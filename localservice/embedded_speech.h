#pragma once

#include "base/interface.h"
#include "localservice/models/model_store.h"
#include "localservice/speech/engine_pool.h"

#include <memory>
#include <mutex>

namespace velmo::localservice {

/// Speech recognised in this process: by Whisper from when there is a model for it, by PocketSphinx until then.
class EmbeddedSpeech final : public SpeechRecognition, private Unmovable {
public:
    /// `model` is a name, a file, "none", or empty: what is told to be used.
    EmbeddedSpeech(const ModelStore &models, const QString &model);
    ~EmbeddedSpeech() override;

    [[nodiscard]] QString description() const override;
    [[nodiscard]] SpeechFacts facts() const override;
    [[nodiscard]] Result<void, QString> waitUntilReady() override;
    [[nodiscard]] bool isReady() const override;
    [[nodiscard]] std::optional<double> workPerSecond() const override;
    void warm(const QString &language) override;
    [[nodiscard]] SpeechOutcome transcribe(Upload upload, const std::function<bool()> &isGone) override;
    [[nodiscard]] bool takesGrowingRecordings() const override;
    [[nodiscard]] Result<std::unique_ptr<SpeechSession>, Refusal>
    begin(Upload about, std::shared_ptr<Patience> patience) override;

private:
    [[nodiscard]] EnginePool &engines() const;
    [[nodiscard]] bool hasModel() const;
    [[nodiscard]] Result<InstalledModel, QString> modelFor(const QString &language) const;

    const ModelStore m_models;
    const QString m_model;
    mutable std::mutex m_mutex; // of what follows
    mutable std::unique_ptr<EnginePool> m_simple;
    mutable std::unique_ptr<EnginePool>
        m_whisper; ///< From when there was a model; it says so when that is gone.
};

} // namespace velmo::localservice
