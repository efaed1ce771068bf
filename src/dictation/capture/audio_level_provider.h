#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "dictation/dictation_display.h"

#include <QList>
#include <QObject>

namespace velmo {

class AudioLevelSource;

/// Turns input levels into the moving row of dots in the recording bar: adapts to the speaker's loudness, lets a
/// sound wander through the row from right to left in half a second, and shapes the row so that the middle stands
/// highest. The figures are product decisions. Main thread.
class AudioLevelProvider final : public QObject, public LevelMonitor {
    Q_OBJECT
    Q_PROPERTY(QList<double> dotLevels READ dotLevels NOTIFY dotLevelsChanged)
    Q_PROPERTY(double currentLevel READ currentLevel NOTIFY currentLevelChanged)

public:
    static constexpr int dotCount = 10;

    /// The queue and the source outlive the provider.
    AudioLevelProvider(MainQueue &queue, AudioLevelSource &source);

    void startMonitoring() override;
    /// Sets both published values to rest at once; whoever draws them lets them sink.
    void stopMonitoring() override;

    /// Takes the level of one captured block, 0 to 1.
    void receiveLevel(double level);
    /// One step of the row; runs every 50 ms while monitoring.
    void tick();

    /// The heights to draw, 0 to 1, leftmost first.
    [[nodiscard]] const QList<double> &dotLevels() const { return m_dotLevels; }
    /// The latest level beside the loudest lately, 0 to 1.
    [[nodiscard]] double currentLevel() const { return m_currentLevel; }

Q_SIGNALS:
    void dotLevelsChanged();
    void currentLevelChanged();

private:
    void scheduleTick();
    void setDotLevels(const QList<double> &levels);
    void setCurrentLevel(double level);

    MainQueue &m_queue;
    AudioLevelSource &m_source;
    QList<double> m_dotLevels;
    double m_currentLevel = 0;
    QList<double> m_levelHistory; ///< Oldest first.
    MainQueue::Timer m_updateTimer;
    double m_rollingPeak = 0.1; ///< The loudness that reads as nearly full.
    Lifetime m_lifetime;
};

} // namespace velmo
