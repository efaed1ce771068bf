#pragma once

#include <QQuickWindow>
#include <QString>

class QAccessibleInterface;

namespace velmo::testing {

/// A person in front of a window. They find things by what a screen reader says of them, so what has no accessible name
/// cannot be used here.
class Person {
public:
    /// Shows the window and waits until it has the keyboard.
    explicit Person(QQuickWindow &window);

    /// Clicks in the middle of what is called so; a failure of the test when it cannot be seen.
    void click(const QString &name);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// A press as it comes from a key of the keyboard.
    void pressKeyAt(quint32 scanCode, int key);
    void type(const QString &text);
    /// Presses Tab until the keyboard is there; a failure of the test when it never gets there.
    void tabTo(const QString &name);

    [[nodiscard]] bool sees(const QString &name) const;
    [[nodiscard]] bool isChecked(const QString &name) const;
    /// The name of what has the keyboard; empty when nothing has.
    [[nodiscard]] QString focused() const;

private:
    [[nodiscard]] QAccessibleInterface *find(const QString &name) const;

    QQuickWindow &m_window;
};

} // namespace velmo::testing
