#pragma once

#include <QAnimationDriver>
#include <QCoreApplication>
#include <chrono>

namespace velmo::testing {

/// While it exists, every animation stands still until a test moves it on.
class AnimationClock final : public QAnimationDriver {
public:
    AnimationClock() { install(); }
    ~AnimationClock() override { uninstall(); }

    /// In steps of a frame, as what follows an animation is told at each.
    void moveOn(std::chrono::milliseconds time) {
        constexpr std::chrono::milliseconds kFrame{25};
        for (; time > kFrame; time -= kFrame)
            step(kFrame);
        step(time);
    }

    [[nodiscard]] qint64 elapsed() const override { return m_sinceStart.count(); }

protected:
    void start() override {
        m_sinceStart = {};
        QAnimationDriver::start();
    }

private:
    void step(std::chrono::milliseconds time) {
        for (int round = 0; round < 2; ++round) // an animation that was started is driven from the second on
            QCoreApplication::processEvents();
        m_sinceStart += time;
        if (isRunning())
            QAnimationDriver::advance();
    }

    std::chrono::milliseconds m_sinceStart{0};
};

} // namespace velmo::testing
