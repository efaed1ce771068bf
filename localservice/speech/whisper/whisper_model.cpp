#include "localservice/speech/whisper/whisper_model.h"

#include <QFile>
#include <cmath>
#include <numeric>
#include <whisper.h>

namespace velmo::localservice {

namespace {

whisper_full_params parametersFor(const WhisperRun &run) {
    whisper_full_params parameters = whisper_full_default_params(WHISPER_SAMPLING_GREEDY);
    parameters.greedy.best_of = 1;
    parameters.n_threads = run.threads;
    parameters.audio_ctx = run.window;
    parameters.max_tokens = run.mostTokens;
    parameters.single_segment = true;
    parameters.no_timestamps = true;
    parameters.no_context = true;
    parameters.suppress_nst = true;
    parameters.temperature_inc = 0; // what rises begins anew, and takes as long again
    parameters.print_progress = false;
    parameters.print_realtime = false;
    parameters.print_timestamps = false;
    parameters.abort_callback = [](void *user) { return static_cast<const WhisperRun *>(user)->isOver(); };
    return parameters;
}

} // namespace

void silenceSpeechLibrary() {
    whisper_log_set([](ggml_log_level, const char *, void *) {}, nullptr);
}

void WhisperModel::Free::operator()(whisper_context *context) const {
    whisper_free(context);
}

void WhisperModel::Free::operator()(whisper_state *state) const {
    whisper_free_state(state);
}

std::unique_ptr<WhisperModel> WhisperModel::load(const QString &path) {
    silenceSpeechLibrary();
    whisper_context_params parameters = whisper_context_default_params();
    parameters.flash_attn = true;
    parameters.use_gpu = true; // where the distribution's library has one
    std::unique_ptr<WhisperModel> model(new WhisperModel);
    const QByteArray file = QFile::encodeName(path);
    model->m_context.reset(whisper_init_from_file_with_params_no_state(file.constData(), parameters));
    if (!model->m_context)
        return nullptr;
    model->m_state.reset(whisper_init_state(model->m_context.get()));
    return model->m_state ? std::move(model) : nullptr;
}

WhisperModel::~WhisperModel() = default;

bool WhisperModel::knows(const QString &language) const {
    if (whisper_is_multilingual(m_context.get()) == 0)
        return language == QLatin1StringView("en");
    const QByteArray code = language.toUtf8();
    return code.size() <= 3 && whisper_lang_id(code.constData()) >= 0;
}

int WhisperModel::tokensIn(const QString &text) const {
    return whisper_token_count(m_context.get(), text.toUtf8().constData());
}

std::optional<WhisperText> WhisperModel::recognise(std::span<const float> samples, const WhisperRun &run) {
    whisper_full_params parameters = parametersFor(run);
    const QByteArray language = run.language.toUtf8();
    const QByteArray prompt = run.prompt.toUtf8();
    parameters.language = language.constData();
    parameters.initial_prompt = prompt.isEmpty() ? nullptr : prompt.constData();
    parameters.abort_callback_user_data = const_cast<WhisperRun *>(&run);
    const int failure = whisper_full_with_state(m_context.get(), m_state.get(), parameters, samples.data(),
                                                static_cast<int>(samples.size()));
    if (failure != 0)
        return std::nullopt;
    WhisperText text;
    QByteArray bytes;
    int tokens = 0;
    for (int segment = 0; segment < whisper_full_n_segments_from_state(m_state.get()); ++segment) {
        bytes += whisper_full_get_segment_text_from_state(m_state.get(), segment);
        tokens += whisper_full_n_tokens_from_state(m_state.get(), segment);
    }
    text.text = QString::fromUtf8(bytes).trimmed();
    text.isCutOff = tokens >= run.mostTokens;
    return text;
}

/// The model names the language as the first word of what it heard, so one more word is asked for: what was heard is still
/// there.
std::vector<double> WhisperModel::shares(const QStringList &languages, int threads) {
    const whisper_token start = whisper_token_sot(m_context.get());
    if (whisper_decode_with_state(m_context.get(), m_state.get(), &start, 1, 0, threads) != 0)
        return std::vector<double>(static_cast<size_t>(languages.size()), 0);
    const float *logits = whisper_get_logits_from_state(m_state.get());
    std::vector<double> shares;
    for (const QString &language : languages) {
        const int number = whisper_lang_id(language.toUtf8().constData());
        shares.push_back(std::exp(static_cast<double>(logits[whisper_token_lang(m_context.get(), number)])));
    }
    const double sum = std::accumulate(shares.begin(), shares.end(), 0.0);
    for (double &share : shares)
        share /= sum;
    return shares;
}

} // namespace velmo::localservice
