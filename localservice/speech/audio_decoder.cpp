#include "localservice/speech/audio_decoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <sndfile.h>
#include <soxr.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// Rates of recordings lie between these; outside them a file is damaged or made to unfold into far more than
// it holds.
constexpr int kLowestRate = 4000;
constexpr int kHighestRate = 384000;
constexpr int kMostChannels = 64;
constexpr sf_count_t kBlockFrames = 4096;

struct CloseFile {
    void operator()(SNDFILE *file) const { sf_close(file); }
};
struct DeleteResampler {
    void operator()(soxr *resampler) const { soxr_delete(resampler); }
};

/// The bytes of a file, as libsndfile reads them.
struct Bytes {
    const QByteArray &file;
    sf_count_t position = 0;

    static Bytes &of(void *user) { return *static_cast<Bytes *>(user); }
    static sf_count_t length(void *user) { return of(user).file.size(); }
    static sf_count_t tell(void *user) { return of(user).position; }

    static sf_count_t seek(sf_count_t offset, int whence, void *user) {
        Bytes &bytes = of(user);
        const sf_count_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? bytes.position : length(user);
        bytes.position = std::clamp<sf_count_t>(from + offset, 0, length(user));
        return bytes.position;
    }

    static sf_count_t read(void *into, sf_count_t count, void *user) {
        Bytes &bytes = of(user);
        const sf_count_t taken = std::clamp<sf_count_t>(count, 0, length(user) - bytes.position);
        std::memcpy(into, bytes.file.constData() + bytes.position, static_cast<size_t>(taken));
        bytes.position += taken;
        return taken;
    }
};

/// One channel out of several, the mean of them. What is no number is silence.
void mixDown(const float *frames, std::vector<float> &mono, int channels) {
    for (size_t frame = 0; frame < mono.size(); ++frame) {
        float sum = 0;
        for (int channel = 0; channel < channels; ++channel)
            sum += frames[frame * static_cast<size_t>(channels) + static_cast<size_t>(channel)];
        mono[frame] = std::isfinite(sum) ? sum / static_cast<float>(channels) : 0;
    }
}

/// Collects sound block by block, at the rate of the engine.
class Collector {
public:
    explicit Collector(int rate) {
        const auto form = soxr_io_spec(SOXR_FLOAT32_I, SOXR_INT16_I);
        const auto quality = soxr_quality_spec(SOXR_HQ, 0);
        m_resampler.reset(soxr_create(rate, Sound::samplesPerSecond, 1, nullptr, &form, &quality, nullptr));
        m_ratio = static_cast<double>(Sound::samplesPerSecond) / rate;
    }

    [[nodiscard]] bool isReady() const { return m_resampler != nullptr; }

    void add(const std::vector<float> &mono) { process(mono.data(), mono.size()); }

    /// The resampler holds the last samples back until it is told that there are no more.
    Sound finish() {
        process(nullptr, 0);
        return std::move(m_sound);
    }

private:
    /// Takes all of the input, or with none gives out what was held back.
    void process(const float *mono, size_t count) {
        const size_t room = static_cast<size_t>(static_cast<double>(count) * m_ratio) + kBlockFrames;
        std::vector<int16_t> &samples = m_sound.samples;
        size_t used = 0;
        size_t got = 0;
        do {
            const size_t before = samples.size();
            samples.resize(before + room);
            soxr_process(m_resampler.get(), mono, count, &used, samples.data() + before, room, &got);
            samples.resize(before + got);
            mono = mono ? mono + used : nullptr;
            count -= used;
        } while (got > 0 && (count > 0 || !mono));
    }

    std::unique_ptr<soxr, DeleteResampler> m_resampler;
    double m_ratio = 1;
    Sound m_sound;
};

Result<Sound, QString> readAll(SNDFILE *file, const SF_INFO &info) {
    Collector collector(info.samplerate);
    if (!collector.isReady())
        return failed(u"The recording could not be resampled."_s);

    const auto longest = static_cast<sf_count_t>(kLongestSoundSeconds * info.samplerate);
    std::vector<float> frames(static_cast<size_t>(kBlockFrames * info.channels));
    std::vector<float> mono;
    sf_count_t total = 0;
    while (const sf_count_t count = sf_readf_float(file, frames.data(), kBlockFrames)) {
        total += count;
        if (total > longest)
            return failed(u"The recording is longer than %1 minutes."_s.arg(kLongestSoundSeconds / 60));
        mono.resize(static_cast<size_t>(count));
        mixDown(frames.data(), mono, info.channels);
        collector.add(mono);
    }
    return collector.finish();
}

} // namespace

Result<Sound, QString> decodeAudio(const QByteArray &file) {
    SF_VIRTUAL_IO access{};
    access.get_filelen = Bytes::length;
    access.seek = Bytes::seek;
    access.read = Bytes::read;
    access.tell = Bytes::tell;
    Bytes bytes{file};
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, CloseFile> opened(sf_open_virtual(&access, SFM_READ, &info, &bytes));
    if (!opened)
        return failed(u"The recording is no sound in a form the embedded engine reads (WAVE, FLAC, "
                      "Ogg, MP3)."_s);
    if (info.samplerate < kLowestRate || info.samplerate > kHighestRate || info.channels < 1 ||
        info.channels > kMostChannels)
        return failed(u"The recording has a sample rate or a number of channels no recording has."_s);
    return readAll(opened.get(), info);
}

} // namespace velmo::localservice
