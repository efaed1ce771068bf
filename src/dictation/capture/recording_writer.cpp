#include "dictation/capture/recording_writer.h"

#include "audio/mix_down.h"
#include "audio/mono_resampler.h"
#include "audio/speech_rate.h"
#include "base/log.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr std::size_t kBlockFrames = 4096;

/// The root mean square that reads as full scale.
constexpr float kFullLevel = 0.15F;

} // namespace

std::uint32_t outputCapacity(int sampleRate, std::size_t frames) {
    return static_cast<std::uint32_t>(static_cast<double>(kSpeechRate) / sampleRate *
                                      static_cast<double>(frames));
}

float inputLevel(std::span<const float> samples, int channels) {
    const auto step = static_cast<std::size_t>(channels);
    float squares = 0;
    for (std::size_t i = 0; i < samples.size(); i += step)
        squares += samples[i] * samples[i];
    const std::size_t frames = std::max<std::size_t>(samples.size() / step, 1);
    return std::clamp(std::sqrt(squares / static_cast<float>(frames)) / kFullLevel, 0.0F, 1.0F);
}

std::unique_ptr<RecordingWriter> RecordingWriter::create(const CaptureFormat &format,
                                                         std::unique_ptr<RecordingFile> file,
                                                         LevelReport report) {
    auto resampler = MonoResampler::create(format.sampleRate);
    if (!resampler || format.channels <= 0)
        return nullptr;
    return std::unique_ptr<RecordingWriter>(
        new RecordingWriter(format, std::move(file), std::move(resampler), std::move(report)));
}

RecordingWriter::RecordingWriter(const CaptureFormat &format, std::unique_ptr<RecordingFile> file,
                                 std::unique_ptr<MonoResampler> resampler, LevelReport report)
    : m_format(format),
      m_file(std::move(file)),
      m_resampler(std::move(resampler)),
      m_report(std::move(report)) {
    m_block.reserve(kBlockFrames * static_cast<std::size_t>(format.channels));
    m_mixed.reserve(kBlockFrames);
}

RecordingWriter::~RecordingWriter() {
    finishBlock();
    write(m_resampler->finish());
}

void RecordingWriter::append(std::span<const float> samples) {
    const std::size_t blockSize = kBlockFrames * static_cast<std::size_t>(m_format.channels);
    while (!samples.empty()) {
        const auto part = samples.first(std::min(samples.size(), blockSize - m_block.size()));
        m_block.insert(m_block.end(), part.begin(), part.end());
        samples = samples.subspan(part.size());
        if (m_block.size() == blockSize)
            finishBlock();
    }
}

void RecordingWriter::finishBlock() {
    const std::size_t frames = m_block.size() / static_cast<std::size_t>(m_format.channels);
    if (const std::uint32_t capacity = outputCapacity(m_format.sampleRate, frames); capacity > 0) {
        mixDown(m_block, m_format.channels, m_mixed);
        write(m_resampler->convert(m_mixed, capacity));
        m_report(inputLevel(m_block, m_format.channels));
    }
    m_block.clear();
}

void RecordingWriter::write(std::span<const float> samples) {
    if (samples.empty())
        return;
    const auto written = m_file->write(samples);
    if (written || m_lacksSamples)
        return;
    m_lacksSamples = true;
    log(LogTag::Recorder, u"The recording lacks samples: "_s + written.error().description);
}

} // namespace velmo
