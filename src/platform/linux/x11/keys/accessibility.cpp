#include "platform/linux/x11/keys/accessibility.h"

#include <QCoreApplication>

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

Accessibility::Accessibility(bool canObserve, bool canInject, const QProcessEnvironment &environment) {
    if (isWaylandSession(environment))
        m_reason = QCoreApplication::translate(
            "Accessibility",
            "A Wayland session shows keys to the focused window alone. To dictate, bind the command "
            "\"velmo toggle\" to a key in the desktop's keyboard settings.");
    else if (!canObserve)
        m_reason = QCoreApplication::translate(
            "Accessibility",
            "There is no X display that reports keys. To dictate, run the command \"velmo toggle\".");
    else if (!canInject)
        m_reason = QCoreApplication::translate(
            "Accessibility",
            "The X display does not let Velmo type into other applications (no XTEST extension).");
}

} // namespace velmo::x11
