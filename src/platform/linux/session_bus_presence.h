#pragma once

#include <QFileInfo>

namespace velmo {

/// Whether this process belongs to a session with a bus. Looking for one that is not there would make D-Bus libraries
/// start a bus of their own, which nobody else would be on and which would outlive us.
[[nodiscard]] inline bool hasSessionBus() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

} // namespace velmo
