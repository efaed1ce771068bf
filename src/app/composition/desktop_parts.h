#pragma once

#include "app/desktop/desktop_application.h"

namespace velmo {

class CoreParts;

/// The parts list of the desktop application: what it has beyond the parts of every `velmo`, which outlive it: keys,
/// microphone, sounds, the cursor of other applications, and the windows. Takes hold of the display; the failure is a
/// sentence. Main thread.
[[nodiscard]] Result<std::unique_ptr<DesktopSession>, QString> openDesktopParts(CoreParts &core);

} // namespace velmo
