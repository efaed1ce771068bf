#pragma once

#include "base/interface.h"
#include "support/private_bus.h"

#include <QDBusConnection>

namespace velmo::testing {

/// A desktop's screen saver on the bus, until it ends.
class ScreenSaver : private Unmovable {
public:
    explicit ScreenSaver(const PrivateBus &bus);
    ~ScreenSaver();

    /// Tells the session by the desktop's own interface; everybody has got it before what is sent from here on.
    void setActive(bool active, const QString &interface = QStringLiteral("org.freedesktop.ScreenSaver"));

private:
    QDBusConnection m_connection;
};

} // namespace velmo::testing
