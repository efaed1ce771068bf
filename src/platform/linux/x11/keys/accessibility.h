#pragma once

#include "platform/accessibility_permission.h"

#include <QProcessEnvironment>

namespace velmo::x11 {

/// What an X display allows, found out once: neither the kind of session nor the display changes while Velmo
/// runs.
class Accessibility final : public AccessibilityPermission {
public:
    /// @param canObserve whether the display reports keys.
    /// @param canInject whether it lets one program press keys in another (XTEST).
    Accessibility(bool canObserve, bool canInject, const QProcessEnvironment &environment);

    [[nodiscard]] bool isTrusted() const override { return m_isTrusted; }

private:
    bool m_isTrusted;
};

} // namespace velmo::x11
