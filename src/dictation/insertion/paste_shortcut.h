#pragma once

#include "platform/key_injector.h"

#include <QStringView>
#include <optional>

namespace velmo {

/// How to paste into a program to which Control+V means something else: terminals pass it on to what runs in
/// them. Nothing for every other program. Case does not count in the class of the window ("XTerm").
[[nodiscard]] std::optional<PasteShortcut> ownPasteShortcut(QStringView windowClass);

} // namespace velmo
