#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>

namespace velmo::x11 {

/// The number that goes by a name in the settings which a desktop publishes for programs of any toolkit.
/// @param settings the value of the property _XSETTINGS_SETTINGS (XSETTINGS 0.5); it comes from another program and may
/// be anything.
[[nodiscard]] std::optional<int32_t> integerSetting(const QByteArray &settings, QByteArrayView name);

} // namespace velmo::x11
