#include "localservice/speech/whisper/whisper_engine.h"

#include "localservice/speech/language_names.h"
#include "localservice/speech/pause_cutter.h"
#include "localservice/speech/whisper/repetition.h"
#include "localservice/speech/whisper/thread_count.h"
#include "localservice/speech/whisper/whisper_voice_detector.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// With a smaller window the model loses its way far more often, and gains no time by it.
constexpr int kSmallestWindow = 512;
constexpr int kWindowStep = 64;
constexpr double kWindowsPerSecond = 50;
// Nobody speaks faster.
constexpr double kTokensPerSecond = 8;
constexpr int kTokensBeside = 16;
constexpr size_t kShortestSamples = Sound::samplesPerSecond * 5 / 4;
// What the model says about languages is to be trusted only when it is certain, of so much speech.
constexpr double kCertain = 0.9;
constexpr double kTellingVoiceSeconds = 2;

constexpr auto kRemedy =
    "Record less at a time, use a smaller model, or start velmo-local-service with --speech-url to use a "
    "faster speech server."_L1;

int windowFor(double seconds) {
    const double needed = kWindowsPerSecond * seconds + kWindowStep;
    const int rounded = static_cast<int>(std::ceil(needed / kWindowStep)) * kWindowStep;
    return std::clamp(rounded, kSmallestWindow, WhisperModel::wholeWindow);
}

/// What is too short is followed by silence.
std::vector<float> samplesOf(const Sound &sound) {
    constexpr float fullScale = 32768;
    std::vector<float> samples(std::max(sound.samples.size(), kShortestSamples));
    std::transform(sound.samples.begin(), sound.samples.end(), samples.begin(),
                   [](int16_t sample) { return static_cast<float>(sample) / fullScale; });
    return samples;
}

/// "..." is what the model writes of sound in which it found no word.
bool hasWords(const QString &text) {
    return std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.isLetterOrNumber(); });
}

class WhisperEngine final : public SpeechEngine {
public:
    explicit WhisperEngine(const ModelSurroundings &surroundings) : m_loaded(surroundings) {}

    [[nodiscard]] Result<void, Refusal> warm(const QString &language) override {
        const auto model = m_loaded.get(languageCode(language).value_or(QString()));
        if (!model)
            return failed(model.error());
        m_model = *model;
        return {};
    }

    [[nodiscard]] std::optional<Clock::time_point> restsAt() const override { return m_loaded.restsAt(); }
    void rest() override { m_loaded.giveBack(); }

    /// It is seen from the first recording.
    [[nodiscard]] std::optional<double> measureWorkPerSecond() override { return std::nullopt; }

    [[nodiscard]] SpeechOutcome transcribe(const Speech &speech, const Patience &patience) override;

private:
    [[nodiscard]] QStringList wantedLanguages(const Upload &upload) const;
    [[nodiscard]] std::optional<QString> languageHeard(const QStringList &wanted, int threads) const;
    [[nodiscard]] std::optional<WhisperText> mended(std::optional<WhisperText> heard,
                                                    const std::vector<float> &samples, WhisperRun run) const;
    [[nodiscard]] WhisperRun runFor(const Upload &upload, double seconds, const Patience &patience) const;
    [[nodiscard]] QString promptOf(const QString &words) const;

    LoadedModel m_loaded;
    WhisperModel *m_model = nullptr;
};

/// What the model knows of them, the primary one first.
QStringList WhisperEngine::wantedLanguages(const Upload &upload) const {
    QStringList wanted;
    for (const QString &written : QStringList(upload.language) + upload.languages) {
        const QString code = languageCode(written).value_or(QString());
        if (m_model->knows(code) && !wanted.contains(code))
            wanted.append(code);
    }
    return wanted;
}

/// Another language than the first, when the sound recognised last is certainly in that.
std::optional<QString> WhisperEngine::languageHeard(const QStringList &wanted, int threads) const {
    const auto shares = m_model->shares(wanted, threads);
    const auto most = std::max_element(shares.begin(), shares.end());
    if (most == shares.begin() || *most < kCertain)
        return std::nullopt;
    return wanted[most - shares.begin()];
}

/// As many of the words as the model can look back at, the first ones first.
QString WhisperEngine::promptOf(const QString &words) const {
    QString prompt = words;
    while (m_model->tokensIn(prompt) > WhisperModel::mostPromptTokens) {
        const qsizetype comma = prompt.lastIndexOf(u',');
        prompt.truncate(std::max<qsizetype>(comma, 0));
    }
    return prompt;
}

/// Where the model has lost its way it looks once more, with all of its window.
std::optional<WhisperText> WhisperEngine::mended(std::optional<WhisperText> heard,
                                                 const std::vector<float> &samples, WhisperRun run) const {
    if (!heard || run.window == WhisperModel::wholeWindow ||
        (!heard->isCutOff && !repeatsItself(heard->text)))
        return heard;
    run.window = WhisperModel::wholeWindow;
    return m_model->recognise(samples, run);
}

WhisperRun WhisperEngine::runFor(const Upload &upload, double seconds, const Patience &patience) const {
    WhisperRun run;
    run.prompt = promptOf(upload.prompt);
    run.window = windowFor(seconds);
    run.mostTokens = static_cast<int>(kTokensPerSecond * seconds) + kTokensBeside;
    run.threads = threadsForWork();
    run.isOver = [&patience] { return patience.isOver(); };
    return run;
}

SpeechOutcome WhisperEngine::transcribe(const Speech &speech, const Patience &patience) {
    const QStringList wanted = wantedLanguages(speech.upload);
    if (wanted.isEmpty())
        return failed(
            Refusal{422, u"The speech model does not know any of the selected languages. Use another with "
                         "'velmo-local-service models use'."_s});
    const auto chosen = speech.choice ? speech.choice->language() : std::nullopt;
    const std::vector<float> samples = samplesOf(speech.sound);
    WhisperRun run =
        runFor(speech.upload, static_cast<double>(samples.size()) / Sound::samplesPerSecond, patience);
    run.language = chosen.value_or(wanted.first());

    auto heard = m_model->recognise(samples, run);
    if (heard && !chosen && speech.voiceSeconds >= kTellingVoiceSeconds) {
        if (const auto other = wanted.size() > 1 ? languageHeard(wanted, run.threads) : std::nullopt) {
            run.language = *other;
            heard = m_model->recognise(samples, run);
        }
        if (speech.choice)
            speech.choice->choose(run.language);
    }
    heard = mended(std::move(heard), samples, run);
    if (!heard)
        return failed(Refusal{503, u"The speech engine was not done with this recording in time."_s});
    return Transcript{hasWords(heard->text) ? heard->text : QString(), run.language};
}

Result<Speech, Refusal> prepare(Upload upload) {
    auto sound = decodeAudio(upload.audio);
    if (!sound)
        return failed(Refusal{422, sound.error()});
    return Speech{std::move(upload), std::move(*sound)};
}

} // namespace

EngineKind whisperEngines(const ModelSurroundings &surroundings) {
    EngineKind kind;
    kind.facts = {u"Whisper"_s};
    kind.description = u"embedded engine, Whisper"_s;
    kind.remedy = kRemedy;
    kind.make = [surroundings]() -> Result<std::unique_ptr<SpeechEngine>, QString> {
        return std::make_unique<WhisperEngine>(surroundings);
    };
    kind.prepare = prepare;
    kind.makeCutter = [] { return std::make_unique<PauseCutter>(std::make_unique<WhisperVoiceDetector>()); };
    return kind;
}

} // namespace velmo::localservice
