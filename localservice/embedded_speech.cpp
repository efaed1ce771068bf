#include "localservice/embedded_speech.h"

#include "localservice/models/model_catalogue.h"
#include "localservice/models/model_file.h"
#include "localservice/speech/pocketsphinx/pocketsphinx_engine.h"
#ifdef VELMO_WHISPER
#include "localservice/speech/whisper/whisper_engine.h"
#endif

using namespace Qt::StringLiterals;

namespace velmo::localservice {

EmbeddedSpeech::EmbeddedSpeech(const ModelStore &models, const QString &model)
    : m_models(models), m_model(model) {}
EmbeddedSpeech::~EmbeddedSpeech() = default;

bool EmbeddedSpeech::hasModel() const {
#ifdef VELMO_WHISPER
    if (m_model.isEmpty())
        return !m_models.installed().isEmpty();
    return m_model != u"none";
#else
    return false;
#endif
}

Result<InstalledModel, QString> EmbeddedSpeech::modelFor(const QString &language) const {
    if (m_model.isEmpty())
        return m_models.modelFor(language);
    if (m_model.contains(u'/'))
        return InstalledModel{m_model, m_model};
    if (const auto model = m_models.find(m_model))
        return *model;
    return failed(
        u"There is no speech model \"%1\" here. 'velmo-local-service models list' says which there are."_s
            .arg(m_model));
}

EnginePool &EmbeddedSpeech::engines() const {
    const std::lock_guard lock(m_mutex);
#ifdef VELMO_WHISPER
    if (!m_whisper && hasModel())
        m_whisper = std::make_unique<EnginePool>(whisperEngines(
            {[this](const QString &language) { return modelFor(language); }, availableMemory}));
    if (m_whisper)
        return *m_whisper;
#endif
    if (!m_simple)
        m_simple =
            std::make_unique<EnginePool>(pocketSphinxEngines(QStringLiteral(VELMO_SPEECH_MODEL_DIRECTORY)));
    return *m_simple;
}

QString EmbeddedSpeech::description() const {
    const QString engine = engines().description();
    const auto model = modelFor({});
    return hasModel() && model ? engine + u" with the model \"%1\""_s.arg(model->name) : engine;
}

SpeechFacts EmbeddedSpeech::facts() const {
    SpeechFacts facts = engines().facts();
    const auto model = modelFor({});
    if (!hasModel() || !model)
        return facts;
    facts.model = model->name;
    const auto sizes = checkModelFile(model->path);
    facts.languages =
        catalogueModel(model->name).value_or(CatalogueModel{{}, 0, velmoLanguages(), {}, {}}).languages;
    if (sizes && !sizes->isMultilingual())
        facts.languages = {u"en"_s};
    return facts;
}

Result<void, QString> EmbeddedSpeech::waitUntilReady() {
    return engines().waitUntilReady();
}

bool EmbeddedSpeech::isReady() const {
    return engines().isReady();
}

std::optional<double> EmbeddedSpeech::workPerSecond() const {
    return engines().workPerSecond();
}

void EmbeddedSpeech::warm(const QString &language) {
    engines().warm(language);
}

SpeechOutcome EmbeddedSpeech::transcribe(Upload upload, const std::function<bool()> &isGone) {
    return engines().transcribe(std::move(upload), isGone);
}

bool EmbeddedSpeech::takesGrowingRecordings() const {
    return engines().takesGrowingRecordings();
}

Result<std::unique_ptr<SpeechSession>, Refusal> EmbeddedSpeech::begin(Upload about,
                                                                      std::shared_ptr<Patience> patience) {
    return engines().begin(std::move(about), std::move(patience));
}

} // namespace velmo::localservice
