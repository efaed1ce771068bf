#pragma once

#include "base/lifetime.h"
#include "base/result.h"
#include "platform/microphone.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

namespace velmo {

class MainQueue;
class RecordingWriter;

/// One opening of the microphone. What it hears stays in memory, the last 2 seconds of it, until a recording takes
/// it over; what is heard then goes on into the recording. Dropping the session closes the microphone and completes
/// the recording. Main thread.
class CaptureSession final : CaptureListener {
public:
    /// Called once, in a task of the main queue, when the microphone could not be opened or is gone.
    using Ended = std::function<void(const MicrophoneFailure &failure)>;

    CaptureSession(MainQueue &queue, Microphone &microphone, Ended ended);
    ~CaptureSession() override;

    /// Forgets what was captured before that moment of `MainQueue::uptime()`.
    void keepFrom(std::chrono::nanoseconds moment);

    /// Waits until the microphone is open or cannot be opened, or until patience is over.
    [[nodiscard]] Result<CaptureFormat, MicrophoneFailure> awaitFormat(std::chrono::milliseconds patience);

    /// Begins the recording with what has been kept.
    void recordInto(std::unique_ptr<RecordingWriter> writer);

    [[nodiscard]] bool hasEnded() const;

    /// Whether frames have come since this was last asked.
    [[nodiscard]] bool takeSignOfLife() { return m_signOfLife.exchange(false); }

private:
    struct Fragment {
        std::chrono::nanoseconds at;
        std::vector<float> samples;
    };

    void opened(const CaptureFormat &format) override;
    void captured(std::span<const float> samples, std::chrono::nanoseconds at) override;
    void ended(const MicrophoneFailure &failure) override;

    void forgetOld();
    [[nodiscard]] std::chrono::nanoseconds durationOf(std::span<const float> samples) const;
    [[nodiscard]] std::size_t samplesIn(std::chrono::nanoseconds duration) const;

    MainQueue &m_queue;
    Ended m_ended;
    Lifetime m_lifetime;
    std::atomic<bool> m_signOfLife = false;

    mutable std::mutex m_mutex; // of all below: the capture thread fills what the main thread takes
    std::condition_variable m_changed;
    std::optional<CaptureFormat> m_format;
    std::optional<MicrophoneFailure> m_failure;
    std::chrono::nanoseconds m_keptFrom{0};
    std::deque<Fragment> m_kept; ///< Oldest first.
    std::unique_ptr<RecordingWriter> m_writer;

    std::unique_ptr<Capture> m_capture; // last: it calls into all of the above until it is dropped
};

} // namespace velmo
