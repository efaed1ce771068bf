#pragma once

#include "base/interface.h"

namespace velmo {

/// Whether Velmo may watch and filter the keyboard and type into other applications. On Linux there is no
/// such permission to give: the answer says whether this session can do it.
class AccessibilityPermission : public Interface {
public:
    /// Main thread; returns at once, so it can be asked again and again.
    [[nodiscard]] virtual bool isTrusted() const = 0;
};

} // namespace velmo
