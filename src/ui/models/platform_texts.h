#pragma once

#include <QString>

namespace velmo::platform_texts {

/// The one table of what the interface must say otherwise on Linux. Everything else is the same on every desktop and
/// stands where it is shown.

/// The name of the trigger key where people read Fn elsewhere. Its blanks do not break, so a line never ends within it.
///
///   withTriggerKey(u"Hold Fn or double-tap Fn", u"Right Control")  "Hold Right Control or double-tap Right Control"
[[nodiscard]] QString withTriggerKey(QStringView text, QStringView keyLabel);

/// In the popover's set-up card.
[[nodiscard]] QString setupHint();

} // namespace velmo::platform_texts
