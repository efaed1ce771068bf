#pragma once

#include <QAbstractAnimation>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// A value that swings to its target as a weight of mass 1 on a damped spring does. Given another target on its way it
/// keeps its speed, so it never jerks. Once it has come to rest nothing runs. The first target is taken at once.
///
/// Qt Quick's SpringAnimation takes a strength from 0 to 5 and a damping from 0 to 1, and nothing says which spring that
/// is; these are given as in mechanics, as designs give them, and solved exactly for the time of each frame.
///
/// A spring given as response (seconds of a free swing) and damping fraction has the stiffness (2π / response)² and the
/// damping 2 · fraction · √stiffness.
class Spring : public QAbstractAnimation {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal target READ target WRITE setTarget NOTIFY targetChanged)
    Q_PROPERTY(qreal value READ value NOTIFY valueChanged)
    Q_PROPERTY(qreal stiffness MEMBER m_stiffness NOTIFY springChanged)
    Q_PROPERTY(
        qreal damping MEMBER m_damping NOTIFY springChanged) ///< Below 2 · √stiffness, so that it swings.
    /// False: targets are taken at once.
    Q_PROPERTY(bool swings MEMBER m_swings NOTIFY springChanged)

public:
    [[nodiscard]] qreal target() const { return m_target; }
    void setTarget(qreal target);
    [[nodiscard]] qreal value() const { return m_value; }

    [[nodiscard]] int duration() const override { return -1; }

Q_SIGNALS:
    void targetChanged();
    void valueChanged();
    void springChanged();

protected:
    void updateCurrentTime(int milliseconds) override;

private:
    struct Motion {
        qreal offset = 0;   ///< From the target.
        qreal velocity = 0; ///< A second.
    };

    [[nodiscard]] Motion motionAfter(qreal seconds) const;
    void setValue(qreal value);

    qreal m_stiffness = 300;
    qreal m_damping = 15;
    bool m_swings = true;
    bool m_hasTarget = false;
    qreal m_target = 0;
    qreal m_value = 0;
    Motion m_start;   ///< When the target was set.
    Motion m_current; ///< Now.
};

} // namespace velmo
