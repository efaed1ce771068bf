#include "localservice/speech/pocketsphinx/pocketsphinx_engine.h"

#include "localservice/speech/pocketsphinx/probe_sound.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <ctime>
#include <limits>
#include <pocketsphinx.h>
#include <sphinxbase/err.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr double kProbeSeconds = 1;
constexpr int kProbeRounds = 2; // the shorter counts
// Speech of people takes the engine longer than the probe does: 0.30 against 0.21 seconds of work a second,
// measured on one machine.
constexpr double kSpeechOverProbe = 1.4;

constexpr auto kRemedy =
    "Get a speech model with 'velmo-local-service models get base', or start velmo-local-service with "
    "--speech-url to use a speech server."_L1;

struct FreeDecoder {
    void operator()(ps_decoder_t *decoder) const { ps_free(decoder); }
};
struct FreeSettings {
    void operator()(cmd_ln_t *settings) const { cmd_ln_free_r(settings); }
};
using Decoder = std::unique_ptr<ps_decoder_t, FreeDecoder>;

/// "this is a test" → "This is a test.": the model knows neither capitals nor marks.
QString asSentence(const QString &words) {
    if (words.isEmpty())
        return words;
    return words.first(1).toUpper() + words.sliced(1) + u'.';
}

/// What this thread has worked so far. The clock on the wall would not do for the first measurement: services
/// are often started while the machine is busy starting others.
double processorSeconds() {
    timespec worked{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &worked);
    return static_cast<double>(worked.tv_sec) + static_cast<double>(worked.tv_nsec) / 1e9;
}

class PocketSphinxEngine final : public SpeechEngine {
public:
    explicit PocketSphinxEngine(Decoder decoder) : m_decoder(std::move(decoder)) {}

    [[nodiscard]] std::optional<double> measureWorkPerSecond() override {
        const Sound probe = probeSound(kProbeSeconds);
        double shortest = std::numeric_limits<double>::max();
        for (int round = 0; round < kProbeRounds; ++round) {
            const double begun = processorSeconds();
            static_cast<void>(recognise(probe));
            shortest = std::min(shortest, processorSeconds() - begun);
        }
        return shortest / kProbeSeconds * kSpeechOverProbe;
    }

    [[nodiscard]] SpeechOutcome transcribe(const Speech &speech, const Patience &) override {
        return Transcript{asSentence(recognise(speech.sound)), u"en"_s};
    }

private:
    /// The words, in lower case, or nothing for silence and noise. The whole recording goes in at once: the
    /// loudness of all of it is what the engine needs to know before it hears the first word. (Fed piece by
    /// piece, it gets most words of the same recordings wrong.)
    QString recognise(const Sound &sound) {
        ps_start_stream(m_decoder.get());
        ps_start_utt(m_decoder.get());
        ps_process_raw(m_decoder.get(), sound.samples.data(), sound.samples.size(), FALSE, TRUE);
        ps_end_utt(m_decoder.get());
        return QString::fromUtf8(ps_get_hyp(m_decoder.get(), nullptr)).trimmed();
    }

    Decoder m_decoder;
};

Result<std::unique_ptr<SpeechEngine>, QString> makeEngine(const QString &modelDirectory) {
    const QDir directory(modelDirectory);
    const auto file = [&directory](const QString &name) {
        return QFile::encodeName(directory.filePath(name));
    };
    const QByteArray sounds = file(u"en-us"_s);
    const QByteArray sentences = file(u"en-us.lm.bin"_s);
    const QByteArray words = file(u"cmudict-en-us.dict"_s);

    err_set_logfp(nullptr); // it would write what it hears
    const std::unique_ptr<cmd_ln_t, FreeSettings> settings(
        cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", sounds.constData(), "-lm", sentences.constData(),
                    "-dict", words.constData(), nullptr));
    Decoder decoder(settings ? ps_init(settings.get()) : nullptr);
    if (!decoder)
        return failed(u"The embedded speech engine found no model in %1. Install the package "
                      "pocketsphinx-en-us, or use a speech server with --speech-url."_s.arg(modelDirectory));
    return std::make_unique<PocketSphinxEngine>(std::move(decoder));
}

Result<Speech, Refusal> prepare(Upload upload) {
    if (!upload.languages.contains(u"en"))
        return failed(Refusal{422, u"The embedded speech engine understands English only, and "
                                   "English is not among the selected languages. "_s +
                                       kRemedy});
    auto sound = decodeAudio(upload.audio);
    if (!sound)
        return failed(Refusal{422, sound.error()});
    return Speech{std::move(upload), std::move(*sound)};
}

} // namespace

EngineKind pocketSphinxEngines(const QString &modelDirectory) {
    EngineKind kind;
    kind.facts = {u"PocketSphinx"_s, {}, {u"en"_s}};
    kind.description = u"embedded engine, English"_s;
    kind.instances = std::thread::hardware_concurrency() > 1 ? 2 : 1;
    kind.make = [modelDirectory] { return makeEngine(modelDirectory); };
    kind.remedy = kRemedy;
    kind.prepare = prepare;
    return kind;
}

} // namespace velmo::localservice
