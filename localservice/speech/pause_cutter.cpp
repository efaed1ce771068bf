#include "localservice/speech/pause_cutter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace velmo::localservice {

namespace {

constexpr size_t kFrame = VoiceDetector::samplesPerFrame;
constexpr float kFullScale = 32768;
// A voice begins above the one and goes on above the other.
constexpr float kBegins = 0.5F;
constexpr float kGoesOn = 0.35F;
// What is weak for less is a stop consonant.
constexpr size_t kWeakFrames = 5;

size_t framesIn(double seconds) {
    return static_cast<size_t>(std::lround(seconds / VoiceDetector::frameSeconds));
}

float loudness(std::span<const int16_t> samples) {
    float sum = 0;
    for (const int16_t sample : samples)
        sum += static_cast<float>(sample) * static_cast<float>(sample);
    return std::sqrt(sum / static_cast<float>(samples.size())) / kFullScale;
}

std::vector<float> scaled(std::span<const int16_t> samples) {
    std::vector<float> result(samples.size());
    std::transform(samples.begin(), samples.end(), result.begin(),
                   [](int16_t sample) { return static_cast<float>(sample) / kFullScale; });
    return result;
}

} // namespace

PauseCutter::PauseCutter(std::unique_ptr<VoiceDetector> detector, const CutLimits &limits)
    : m_detector(std::move(detector)),
      m_limits(limits),
      // Somebody who speaks at once is understood better after a moment of silence, by the detector and by the engine.
      m_partial(framesIn(limits.margin) * kFrame) {}

std::vector<SoundPiece> PauseCutter::append(std::span<const int16_t> samples) {
    std::vector<SoundPiece> pieces;
    m_partial.insert(m_partial.end(), samples.begin(), samples.end());
    const size_t whole = m_partial.size() / kFrame * kFrame;
    hear(std::span(m_partial).first(whole), pieces);
    m_partial.erase(m_partial.begin(), m_partial.begin() + static_cast<std::ptrdiff_t>(whole));
    return pieces;
}

std::vector<SoundPiece> PauseCutter::finish() {
    std::vector<SoundPiece> pieces;
    if (!m_partial.empty())
        m_partial.resize(kFrame);
    hear(std::exchange(m_partial, {}), pieces);
    cut(std::min(m_frames.size(), m_voiceEnd + framesIn(m_limits.margin)), pieces);
    return pieces;
}

void PauseCutter::hear(std::span<const int16_t> samples, std::vector<SoundPiece> &pieces) {
    if (samples.empty())
        return;
    const std::vector<float> voice = m_detector->hear(scaled(samples));
    for (size_t index = 0; index < voice.size(); ++index) {
        take(samples.subspan(index * kFrame, kFrame), voice[index]);
        shorten();
        if (const auto place = placeToCut())
            cut(*place, pieces);
    }
}

void PauseCutter::take(std::span<const int16_t> samples, float voice) {
    m_wasVoice = voice >= (m_wasVoice ? kGoesOn : kBegins);
    m_samples.insert(m_samples.end(), samples.begin(), samples.end());
    m_frames.push_back({m_wasVoice ? voice : 0, voice * loudness(samples)});
    if (m_wasVoice)
        m_voiceEnd = m_frames.size();
}

/// Leaves out what is silent for long: before the voice all but the margin, in it the middle of the pause.
void PauseCutter::shorten() {
    if (m_voiceEnd == 0 && m_frames.size() > framesIn(m_limits.margin))
        drop(0, 1);
    else if (m_frames.size() - m_voiceEnd > framesIn(m_limits.longestGap))
        drop(m_voiceEnd + framesIn(m_limits.longestGap / 2), 1);
}

/// Before which frame, if there is a piece by now.
std::optional<size_t> PauseCutter::placeToCut() const {
    if (m_voiceEnd >= framesIn(m_limits.shortest) && m_frames.size() - m_voiceEnd >= framesIn(m_limits.pause))
        return m_voiceEnd + framesIn(m_limits.margin);
    if (m_voiceEnd > 0 && m_frames.size() >= framesIn(m_limits.longest))
        return weakestFrame();
    return std::nullopt;
}

/// In the middle of where the voice is weakest, in the second half.
size_t PauseCutter::weakestFrame() const {
    size_t weakest = m_frames.size() / 2;
    float least = std::numeric_limits<float>::max();
    for (size_t first = m_frames.size() / 2; first + kWeakFrames <= m_frames.size(); ++first) {
        float strength = 0;
        for (size_t index = first; index < first + kWeakFrames; ++index)
            strength += m_frames[index].strength;
        if (strength < least) {
            least = strength;
            weakest = first + kWeakFrames / 2;
        }
    }
    return weakest;
}

/// Takes the first frames away as a piece; drops them when there is no voice in them.
void PauseCutter::cut(size_t frames, std::vector<SoundPiece> &pieces) {
    const auto end = m_frames.begin() + static_cast<std::ptrdiff_t>(frames);
    const double voice = std::accumulate(m_frames.begin(), end, 0.0, [](double sum, const Frame &frame) {
        return sum + static_cast<double>(frame.voice);
    });
    SoundPiece piece;
    piece.voiceSeconds = voice * VoiceDetector::frameSeconds;
    const auto samplesEnd = m_samples.begin() + static_cast<std::ptrdiff_t>(frames * kFrame);
    piece.sound.samples.assign(m_samples.begin(), samplesEnd);
    if (piece.voiceSeconds >= m_limits.leastVoice)
        pieces.push_back(std::move(piece));
    drop(0, frames);
}

void PauseCutter::drop(size_t first, size_t count) {
    const auto at = [](size_t place) { return static_cast<std::ptrdiff_t>(place); };
    m_frames.erase(m_frames.begin() + at(first), m_frames.begin() + at(first + count));
    m_samples.erase(m_samples.begin() + at(first * kFrame), m_samples.begin() + at((first + count) * kFrame));
    look();
}

/// Finds the end of the voice anew.
void PauseCutter::look() {
    m_voiceEnd = m_frames.size();
    while (m_voiceEnd > 0 && m_frames[m_voiceEnd - 1].voice == 0)
        --m_voiceEnd;
}

} // namespace velmo::localservice
