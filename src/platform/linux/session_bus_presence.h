#pragma once

#include <QFileInfo>

namespace velmo {

inline constexpr const char *kSessionBusVariable = "DBUS_SESSION_BUS_ADDRESS";
/// A kind of address that no D-Bus library knows.
inline constexpr const char *kNoSessionBus = "disabled:";

/// Whether this process belongs to a session with a bus. Looking for one that is not there would make D-Bus libraries
/// start a bus of their own, which nobody else would be on and which would outlive us.
[[nodiscard]] inline bool hasSessionBus() {
    const QByteArray address = qgetenv(kSessionBusVariable);
    return address.isEmpty()
               ? QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"))
               : address != kNoSessionBus;
}

/// Has libraries that do not ask, such as Qt's tray icons, find no bus where there is none.
inline void keepFromStartingSessionBus() {
    if (!hasSessionBus())
        qputenv(kSessionBusVariable, kNoSessionBus);
}

} // namespace velmo
