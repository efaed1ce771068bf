#include "support/person.h"

#include "support/qt_printing.h"
#include "support/wait_until.h"

#include <QAccessible>
#include <QQuickItem>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>

namespace velmo::testing {

namespace {

/// More than any page has to reach with Tab.
constexpr int kMostTabs = 60;

/// The first that satisfies, itself or below.
QAccessibleInterface *search(QAccessibleInterface *from,
                             const std::function<bool(QAccessibleInterface &)> &satisfies) {
    if (!from || from->state().invisible)
        return nullptr;
    if (satisfies(*from))
        return from;
    for (int child = 0; child < from->childCount(); ++child) {
        if (QAccessibleInterface *found = search(from->child(child), satisfies))
            return found;
    }
    return nullptr;
}

} // namespace

Person::Person(QQuickWindow &window) : m_window(window) {
    QAccessible::setActive(true);
    m_window.show();
    m_window.requestActivate();
    EXPECT_TRUE(waitUntil([&] { return m_window.isExposed() && m_window.isActive(); }));
}

void Person::click(const QString &name) {
    QAccessibleInterface *thing = find(name);
    ASSERT_TRUE(thing) << qUtf8Printable(name) << " cannot be seen";
    const QPoint middle = thing->rect().center() - m_window.position();
    QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier, middle);
}

void Person::press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&m_window, static_cast<Qt::Key>(key), modifiers);
}

void Person::pressKeyAt(quint32 scanCode, int key) {
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, scanCode, 0, 0);
    QCoreApplication::sendEvent(&m_window, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, scanCode, 0, 0);
    QCoreApplication::sendEvent(&m_window, &up);
}

void Person::type(const QString &text) {
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &m_window, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void Person::tabTo(const QString &name) {
    for (int tabs = 0; tabs < kMostTabs && focused() != name; ++tabs)
        press(Qt::Key_Tab);
    EXPECT_EQ(focused(), name);
}

bool Person::sees(const QString &name) const {
    return find(name) != nullptr;
}

bool Person::isChecked(const QString &name) const {
    QAccessibleInterface *thing = find(name);
    return thing && thing->state().checked;
}

QString Person::focused() const {
    const QAccessibleInterface *thing =
        m_window.activeFocusItem() ? QAccessible::queryAccessibleInterface(m_window.activeFocusItem())
                                   : nullptr;
    return thing ? thing->text(QAccessible::Name) : QString();
}

/// What can be used goes before a text that is called the same.
QAccessibleInterface *Person::find(const QString &name) const {
    const auto isCalledSo = [&](QAccessibleInterface &thing) {
        return thing.text(QAccessible::Name) == name && !thing.rect().isEmpty();
    };
    QAccessibleInterface *window = QAccessible::queryAccessibleInterface(&m_window);
    QAccessibleInterface *usable = search(window, [&](QAccessibleInterface &thing) {
        return thing.role() != QAccessible::StaticText && isCalledSo(thing);
    });
    return usable ? usable : search(window, isCalledSo);
}

} // namespace velmo::testing
