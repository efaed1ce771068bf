#pragma once

#include "platform/session_lock.h"

#include <QObject>
#include <QSet>

class QDBusMessage;
class QDBusServiceWatcher;

namespace velmo {

/// What the desktop's screen saver tells on the session bus: locked from the moment at which it covers the screen. Where
/// nobody tells (no bus, no screen saver, a locker of another kind), the session never counts as locked.
class ScreenSaverLock final : public QObject, public SessionLock {
    Q_OBJECT

public:
    ScreenSaverLock();
    ~ScreenSaverLock() override;

    [[nodiscard]] bool isLocked() const override { return !m_active.isEmpty(); }

private Q_SLOTS:
    void activeChanged(bool active, const QDBusMessage &signal);

private:
    void ended(const QString &program);

    QSet<QString> m_active; ///< The screen savers that cover the screen, by their unique names on the bus.
    QDBusServiceWatcher *m_programs;
};

} // namespace velmo
