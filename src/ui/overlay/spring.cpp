#include "ui/overlay/spring.h"

#include <cmath>

namespace velmo {

namespace {

/// What the eye cannot tell from rest, of a value between 0 and 1 or a height of some pixels.
constexpr qreal kRest = 0.002;

} // namespace

void Spring::setTarget(qreal target) {
    if (m_hasTarget && target == m_target)
        return;
    const bool swings = std::exchange(m_hasTarget, true) && m_swings;
    m_start = swings ? Motion{m_value - target, m_current.velocity} : Motion{};
    m_current = m_start;
    m_target = target;
    Q_EMIT targetChanged();
    stop();
    if (swings)
        start();
    else
        setValue(target);
}

void Spring::updateCurrentTime(int milliseconds) {
    m_current = motionAfter(milliseconds / 1000.0);
    const bool rests = std::abs(m_current.offset) < kRest && std::abs(m_current.velocity) < kRest;
    if (rests) {
        m_current = {};
        stop();
    }
    setValue(m_target + m_current.offset);
}

/// The solution of a damped oscillation with these starting values.
Spring::Motion Spring::motionAfter(qreal seconds) const {
    const qreal decay = m_damping / 2;
    const qreal frequency = std::sqrt(m_stiffness - decay * decay);
    const qreal sine = std::sin(frequency * seconds);
    const qreal cosine = std::cos(frequency * seconds);
    const qreal inPhase = m_start.offset;
    const qreal behind = (m_start.velocity + decay * m_start.offset) / frequency;
    const qreal envelope = std::exp(-decay * seconds);
    Motion motion;
    motion.offset = envelope * (inPhase * cosine + behind * sine);
    motion.velocity = envelope * frequency * (behind * cosine - inPhase * sine) - decay * motion.offset;
    return motion;
}

void Spring::setValue(qreal value) {
    if (value == m_value)
        return;
    m_value = value;
    Q_EMIT valueChanged();
}

} // namespace velmo
