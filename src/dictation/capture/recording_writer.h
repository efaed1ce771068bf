#pragma once

#include "base/interface.h"
#include "platform/microphone.h"
#include "platform/recording_files.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace velmo {

class MonoResampler;

/// How many samples at 16 kHz may be written for a block of captured frames: the exact share without its fraction.
/// 4096 frames at 48 kHz make 1365; 2 frames make 0.
[[nodiscard]] std::uint32_t outputCapacity(int sampleRate, std::size_t frames);

/// How loud interleaved samples are, 0 to 1: the root mean square of the first channel beside 0.15, which a speaking
/// voice reaches (a product decision).
[[nodiscard]] float inputLevel(std::span<const float> samples, int channels);

/// Turns what a microphone delivers into a recording, in blocks of 4096 frames: each is mixed to one channel,
/// converted to 16 kHz and written, and its level reported. One thread at a time.
class RecordingWriter : private Unmovable {
public:
    using LevelReport = std::function<void(float level)>;

    /// Nothing when the format cannot be converted. The report is called on the thread that appends.
    [[nodiscard]] static std::unique_ptr<RecordingWriter>
    create(const CaptureFormat &format, std::unique_ptr<RecordingFile> file, LevelReport report);
    /// Writes the last, partial block and what the filter holds back, and completes the file.
    ~RecordingWriter();

    /// Takes whole frames, interleaved. A write that fails is logged once; the recording then lacks those samples.
    void append(std::span<const float> samples);

private:
    RecordingWriter(const CaptureFormat &format, std::unique_ptr<RecordingFile> file,
                    std::unique_ptr<MonoResampler> resampler, LevelReport report);
    void finishBlock();
    void write(std::span<const float> samples);

    CaptureFormat m_format;
    std::unique_ptr<RecordingFile> m_file;
    std::unique_ptr<MonoResampler> m_resampler;
    LevelReport m_report;
    std::vector<float> m_block; ///< Interleaved, in the format of the microphone.
    std::vector<float> m_mixed;
    bool m_lacksSamples = false;
};

} // namespace velmo
