#include "platform/linux/x11/keys/accessibility.h"

using namespace Qt::StringLiterals;

namespace velmo::x11 {

namespace {

/// A Wayland session offers an X display too, for the windows of older programs, but keys typed into other
/// windows never reach it.
bool isWaylandSession(const QProcessEnvironment &environment) {
    const QString type = environment.value(u"XDG_SESSION_TYPE"_s);
    if (type == u"x11")
        return false;
    return type == u"wayland" || !environment.value(u"WAYLAND_DISPLAY"_s).isEmpty();
}

} // namespace

Accessibility::Accessibility(bool canObserve, bool canInject, const QProcessEnvironment &environment)
    : m_isTrusted(canObserve && canInject && !isWaylandSession(environment)) {}

} // namespace velmo::x11
