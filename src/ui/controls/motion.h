#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// How much the windows of an engine move. Main thread.
class Motion final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isReduced READ isReduced NOTIFY isReducedChanged)

public:
    /// Whether the desktop asks for less motion.
    [[nodiscard]] bool isReduced() const { return m_isReduced; }
    void setReduced(bool isReduced) {
        if (std::exchange(m_isReduced, isReduced) != isReduced)
            Q_EMIT isReducedChanged();
    }

Q_SIGNALS:
    void isReducedChanged();

private:
    bool m_isReduced = false;
};

} // namespace velmo
