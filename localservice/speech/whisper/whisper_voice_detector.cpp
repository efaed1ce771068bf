#include "localservice/speech/whisper/whisper_voice_detector.h"

#include "localservice/speech/whisper/whisper_model.h"

#include <QResource>
#include <algorithm>
#include <cstring>
#include <whisper.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// The bytes of the model, as the library reads them.
struct Bytes {
    const char *next;
    size_t left;

    static size_t read(void *user, void *into, size_t count) {
        auto &bytes = *static_cast<Bytes *>(user);
        const size_t taken = std::min(count, bytes.left);
        std::memcpy(into, bytes.next, taken);
        bytes.next += taken;
        bytes.left -= taken;
        return taken;
    }

    static bool isAtEnd(void *user) { return static_cast<Bytes *>(user)->left == 0; }
    static void close(void *) {}
};

} // namespace

void WhisperVoiceDetector::Free::operator()(whisper_vad_context *context) const {
    whisper_vad_free(context);
}

WhisperVoiceDetector::WhisperVoiceDetector() {
    silenceSpeechLibrary();
    const QResource model(u":/speech/voice-detector.bin"_s);
    Bytes bytes{reinterpret_cast<const char *>(model.data()), static_cast<size_t>(model.size())};
    whisper_model_loader loader{&bytes, Bytes::read, Bytes::isAtEnd, Bytes::close};
    whisper_vad_context_params parameters = whisper_vad_default_context_params();
    parameters.n_threads = 1; // it is small, and more would wait for one another
    m_context.reset(whisper_vad_init_with_params(&loader, parameters));
    if (m_context)
        whisper_vad_reset_state(m_context.get());
}

WhisperVoiceDetector::~WhisperVoiceDetector() = default;

std::vector<float> WhisperVoiceDetector::hear(std::span<const float> samples) {
    const size_t frames = samples.size() / samplesPerFrame;
    if (!m_context || !whisper_vad_detect_speech_no_reset(m_context.get(), samples.data(),
                                                          static_cast<int>(samples.size())))
        return std::vector<float>(frames, 1);
    const float *voice = whisper_vad_probs(m_context.get());
    return {voice, voice + std::min(frames, static_cast<size_t>(whisper_vad_n_probs(m_context.get())))};
}

} // namespace velmo::localservice
