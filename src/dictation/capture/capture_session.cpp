#include "dictation/capture/capture_session.h"

#include "base/main_queue.h"
#include "dictation/capture/recording_writer.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// The most that is kept in memory; a gesture is known well before.
constexpr std::chrono::nanoseconds kLongestKept = 2s;

constexpr std::chrono::nanoseconds kSecond = 1s;

} // namespace

CaptureSession::CaptureSession(MainQueue &queue, Microphone &microphone, Ended ended)
    : m_queue(queue), m_ended(std::move(ended)), m_capture(microphone.open(*this)) {}

CaptureSession::~CaptureSession() = default;

void CaptureSession::keepFrom(std::chrono::nanoseconds moment) {
    const std::lock_guard lock(m_mutex);
    m_keptFrom = moment;
    forgetOld();
}

Result<CaptureFormat, MicrophoneFailure> CaptureSession::awaitFormat(std::chrono::milliseconds patience) {
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, patience, [this] { return m_format || m_failure; });
    if (m_failure)
        return failed(*m_failure);
    if (!m_format)
        return failed(MicrophoneFailure{u"The sound server did not answer."_s});
    return *m_format;
}

void CaptureSession::recordInto(std::unique_ptr<RecordingWriter> writer) {
    const std::lock_guard lock(m_mutex);
    for (const Fragment &fragment : m_kept)
        writer->append(fragment.samples);
    m_kept.clear();
    m_writer = std::move(writer);
}

bool CaptureSession::hasEnded() const {
    const std::lock_guard lock(m_mutex);
    return m_failure.has_value();
}

// Called on the capture thread

void CaptureSession::opened(const CaptureFormat &format) {
    const std::lock_guard lock(m_mutex);
    m_format = format;
    m_changed.notify_all();
}

void CaptureSession::captured(std::span<const float> samples, std::chrono::nanoseconds at) {
    m_signOfLife = true;
    const std::lock_guard lock(m_mutex);
    if (m_writer) {
        m_writer->append(samples);
        return;
    }
    m_kept.push_back({at, {samples.begin(), samples.end()}});
    m_keptFrom = std::max(m_keptFrom, at + durationOf(samples) - kLongestKept);
    forgetOld();
}

void CaptureSession::ended(const MicrophoneFailure &failure) {
    const std::lock_guard lock(m_mutex);
    m_failure = failure;
    m_changed.notify_all();
    onMain(m_queue, m_lifetime, m_ended)(failure);
}

/// Drops what was captured before the moment from which sound is kept, to the frame.
void CaptureSession::forgetOld() {
    while (!m_kept.empty() && m_kept.front().at < m_keptFrom) {
        Fragment &oldest = m_kept.front();
        const std::chrono::nanoseconds old = m_keptFrom - oldest.at;
        if (old < durationOf(oldest.samples)) {
            const auto begin = oldest.samples.begin();
            oldest.samples.erase(begin, begin + static_cast<std::ptrdiff_t>(samplesIn(old)));
            oldest.at = m_keptFrom;
            return;
        }
        m_kept.pop_front();
    }
}

std::chrono::nanoseconds CaptureSession::durationOf(std::span<const float> samples) const {
    const auto frames = static_cast<std::int64_t>(samples.size()) / m_format->channels;
    return kSecond * frames / m_format->sampleRate;
}

/// How many samples of all channels were captured in the duration; one shorter than a fragment.
std::size_t CaptureSession::samplesIn(std::chrono::nanoseconds duration) const {
    const std::int64_t frames = duration * m_format->sampleRate / kSecond;
    return static_cast<std::size_t>(frames * m_format->channels);
}

} // namespace velmo
