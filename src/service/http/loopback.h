#pragma once

#include <QStringView>

namespace velmo {

/// Whether the host of an address is this machine by its form: "localhost", an address of 127.0.0.0/8, "::1"
/// (written as QUrl::host() gives them: lower case, no brackets). Names are not looked up.
[[nodiscard]] bool isLoopbackHost(QStringView host);

} // namespace velmo
