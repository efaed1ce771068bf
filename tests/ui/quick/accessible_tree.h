#pragma once

#include <QAccessible>
#include <QSet>
#include <QWindow>

namespace velmo::testing {

inline void collectNames(QAccessibleInterface *object, QSet<QString> &names) {
    if (!object || object->state().invisible)
        return;
    names.insert(object->text(QAccessible::Name));
    for (int at = 0; at < object->childCount(); ++at)
        collectNames(object->child(at), names);
}

/// What assistive technology hears of the window: the names of all that is shown. Call QAccessible::setActive before the
/// window is made.
[[nodiscard]] inline QSet<QString> accessibleNames(QWindow &window) {
    QSet<QString> names;
    collectNames(QAccessible::queryAccessibleInterface(&window), names);
    return names;
}

} // namespace velmo::testing
