#include "audio/mono_resampler.h"

#include "audio/speech_rate.h"

#include <algorithm>
#include <soxr.h>

namespace velmo {

namespace {

/// Room for what one call of the library may answer; it is called again until nothing is left.
constexpr std::size_t kRoom = 4096;

} // namespace

std::unique_ptr<MonoResampler> MonoResampler::create(int inputRate) {
    if (inputRate <= 0)
        return nullptr;
    const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
    soxr_error_t error = nullptr;
    soxr *stream = soxr_create(inputRate, kSpeechRate, 1, &error, &io, &quality, nullptr);
    if (error || !stream)
        return nullptr;
    return std::unique_ptr<MonoResampler>(new MonoResampler(stream));
}

MonoResampler::MonoResampler(soxr *stream) : m_stream(stream) {}

MonoResampler::~MonoResampler() {
    soxr_delete(m_stream);
}

std::span<const float> MonoResampler::convert(std::span<const float> block, std::size_t capacity) {
    forgetTaken();
    for (;;) {
        const auto [used, made] = process(block.data(), block.size());
        block = block.subspan(used);
        if (block.empty() || (used == 0 && made == 0))
            break;
    }
    m_taken = std::min(capacity, m_ready.size());
    return {m_ready.data(), m_taken};
}

std::span<const float> MonoResampler::finish() {
    forgetTaken();
    while (process(nullptr, 0).made > 0) {
    }
    m_taken = m_ready.size();
    return m_ready;
}

MonoResampler::Progress MonoResampler::process(const float *samples, std::size_t count) {
    const std::size_t ready = m_ready.size();
    m_ready.resize(ready + kRoom);
    Progress progress;
    if (soxr_process(m_stream, samples, count, &progress.used, m_ready.data() + ready, kRoom, &progress.made))
        progress = {};
    m_ready.resize(ready + progress.made);
    return progress;
}

void MonoResampler::forgetTaken() {
    m_ready.erase(m_ready.begin(), m_ready.begin() + static_cast<std::ptrdiff_t>(m_taken));
    m_taken = 0;
}

} // namespace velmo
