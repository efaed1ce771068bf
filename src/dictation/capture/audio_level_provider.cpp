#include "dictation/capture/audio_level_provider.h"

#include "dictation/capture/recorder.h"

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr auto kTickInterval = 50ms;

/// The loudness reference sinks by this factor a block, so quieter speech soon fills the row again.
constexpr double kPeakDecayRate = 0.995;

/// The reference never sinks below this, so background noise is not blown up to full height.
constexpr double kMinPeak = 0.05;

/// Where a new loudest sound shows.
constexpr double kPeakHeight = 0.8;

const QList<double> kRest(AudioLevelProvider::dotCount, 0.0);

/// Softens the steps between neighbours; both ends stay.
QList<double> smoothed(const QList<double> &history) {
    QList<double> row = history;
    for (qsizetype i = 1; i + 1 < row.size(); ++i)
        row[i] = 0.25 * history[i - 1] + 0.5 * history[i] + 0.25 * history[i + 1];
    return row;
}

/// 1 for the dot right of the middle, falling to 0.6 at the left end.
double shapeFactor(qsizetype index) {
    return 1 - 0.4 * std::abs(static_cast<double>(index) - 5) / 5;
}

} // namespace

AudioLevelProvider::AudioLevelProvider(MainQueue &queue, AudioLevelSource &source)
    : m_queue(queue), m_source(source), m_dotLevels(kRest) {}

void AudioLevelProvider::startMonitoring() {
    m_levelHistory = kRest;
    setDotLevels(kRest);
    m_rollingPeak = kMinPeak;
    m_source.onAudioLevel = m_lifetime.guard([this](float level) { receiveLevel(level); });
    scheduleTick();
}

void AudioLevelProvider::stopMonitoring() {
    m_source.onAudioLevel = nullptr;
    m_updateTimer.reset();
    setDotLevels(kRest);
    setCurrentLevel(0);
}

void AudioLevelProvider::receiveLevel(double level) {
    m_rollingPeak = std::max({m_rollingPeak * kPeakDecayRate, level, kMinPeak});
    setCurrentLevel(std::min(level / m_rollingPeak * kPeakHeight, 1.0));
}

void AudioLevelProvider::tick() {
    m_levelHistory.append(m_currentLevel);
    if (m_levelHistory.size() > dotCount)
        m_levelHistory.remove(0, m_levelHistory.size() - dotCount);
    QList<double> row = smoothed(m_levelHistory);
    for (qsizetype i = 0; i < row.size(); ++i)
        row[i] *= shapeFactor(i);
    setDotLevels(row);
}

void AudioLevelProvider::scheduleTick() {
    m_updateTimer = m_queue.after(kTickInterval, m_lifetime.guard([this] {
        scheduleTick();
        tick();
    }));
}

void AudioLevelProvider::setDotLevels(const QList<double> &levels) {
    if (m_dotLevels == levels)
        return;
    m_dotLevels = levels;
    Q_EMIT dotLevelsChanged();
}

void AudioLevelProvider::setCurrentLevel(double level) {
    if (m_currentLevel == level)
        return;
    m_currentLevel = level;
    Q_EMIT currentLevelChanged();
}

} // namespace velmo
