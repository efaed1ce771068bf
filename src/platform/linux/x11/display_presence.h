#pragma once

namespace velmo {

/// Whether the X display that $DISPLAY names answers. Waits for the X server.
[[nodiscard]] bool hasX11Display();

} // namespace velmo
