#include "localservice/speech/audio_decoder.h"

#include "audio/mix_down.h"
#include "audio/mono_resampler.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <sndfile.h>
#include <span>

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

/// The bytes of a file, as libsndfile reads them.
struct Bytes {
    const QByteArray &file;
    sf_count_t position = 0;

    static Bytes &of(void *user) { return *static_cast<Bytes *>(user); }
    static sf_count_t length(void *user) { return of(user).file.size(); }
    static sf_count_t tell(void *user) { return of(user).position; }

    static sf_count_t seek(sf_count_t offset, int whence, void *user) {
        Bytes &bytes = of(user);
        const sf_count_t end = length(user);
        sf_count_t from = 0;
        if (whence != SEEK_SET)
            from = whence == SEEK_CUR ? bytes.position : end;
        bytes.position = std::clamp<sf_count_t>(from + offset, 0, end);
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

/// With full scale at 1, what lies beyond is clipped.
int16_t quantised(float sample) {
    constexpr float fullScale = 32768;
    return static_cast<int16_t>(std::lrint(std::clamp(sample * fullScale, -fullScale, fullScale - 1)));
}

/// Collects sound block by block, at the rate of the engine.
class Collector {
public:
    explicit Collector(std::unique_ptr<MonoResampler> resampler) : m_resampler(std::move(resampler)) {}

    void add(std::span<const float> mono) {
        constexpr std::size_t all = std::numeric_limits<std::size_t>::max();
        append(m_resampler->convert(mono, all));
    }

    /// The resampler holds the last samples back until it is told that there are no more.
    Sound finish() {
        append(m_resampler->finish());
        return std::move(m_sound);
    }

private:
    void append(std::span<const float> samples) {
        std::transform(samples.begin(), samples.end(), std::back_inserter(m_sound.samples), quantised);
    }

    std::unique_ptr<MonoResampler> m_resampler;
    Sound m_sound;
};

Result<Sound, QString> readAll(SNDFILE *file, const SF_INFO &info) {
    auto resampler = MonoResampler::create(info.samplerate);
    if (!resampler)
        return failed(u"The recording could not be resampled."_s);
    Collector collector(std::move(resampler));

    const auto longest = static_cast<sf_count_t>(kLongestSoundSeconds * info.samplerate);
    std::vector<float> frames(static_cast<size_t>(kBlockFrames * info.channels));
    std::vector<float> mono;
    sf_count_t total = 0;
    while (const sf_count_t count = sf_readf_float(file, frames.data(), kBlockFrames)) {
        total += count;
        if (total > longest)
            return failed(u"The recording is longer than %1 minutes."_s.arg(kLongestSoundSeconds / 60));
        mixDown(std::span(frames).first(static_cast<size_t>(count * info.channels)), info.channels, mono);
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
