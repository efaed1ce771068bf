#include "platform/linux/dbus/screen_saver_lock.h"

#include "platform/linux/session_bus_presence.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// The desktops' interfaces; all of them have the signal ActiveChanged(active as boolean).
const QStringList kInterfaces = {
    u"org.freedesktop.ScreenSaver"_s, u"org.gnome.ScreenSaver"_s, u"org.cinnamon.ScreenSaver"_s,
    u"org.mate.ScreenSaver"_s,        u"org.xfce.ScreenSaver"_s,
};

} // namespace

ScreenSaverLock::ScreenSaverLock() : m_programs(new QDBusServiceWatcher(this)) {
    if (!hasSessionBus())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    for (const QString &interface : kInterfaces)
        bus.connect(QString(), QString(), interface, u"ActiveChanged"_s, this,
                    SLOT(activeChanged(bool, QDBusMessage)));
    m_programs->setConnection(bus);
    m_programs->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(m_programs, &QDBusServiceWatcher::serviceUnregistered, this, &ScreenSaverLock::ended);
}

ScreenSaverLock::~ScreenSaverLock() = default;

void ScreenSaverLock::activeChanged(bool active, const QDBusMessage &signal) {
    const bool wasLocked = isLocked();
    if (!active) {
        ended(signal.service());
        return;
    }
    m_active.insert(signal.service());
    m_programs->addWatchedService(signal.service());
    if (!wasLocked && onLocked)
        onLocked();
}

/// A screen saver that crashes while it covers the screen must not lock Velmo for good.
void ScreenSaverLock::ended(const QString &program) {
    m_active.remove(program);
    m_programs->removeWatchedService(program);
}

} // namespace velmo
