#pragma once

#include "window_set.h"

#include <QQuickWindow>

namespace velmo::screenshots {

/// The main window on one of the pages that hold no texts.
class PageView {
public:
    static constexpr QSize ordinarySize{900, 600};
    static constexpr QSize smallestSize{700, 500};

    PageView(QQmlEngine &engine, MainWindowView::SidebarPage page, OtherPages pages,
             QSize size = ordinarySize);

    [[nodiscard]] QQuickWindow &window() { return m_window; }

    /// Presses and releases a key.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);

private:
    WindowSet m_set;
    QQuickWindow &m_window;
};

} // namespace velmo::screenshots
