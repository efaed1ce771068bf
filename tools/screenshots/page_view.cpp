#include "page_view.h"

#include "stage.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace velmo::screenshots {

PageView::PageView(QQmlEngine &engine, MainWindowView::SidebarPage page, OtherPages pages, QSize size)
    : m_set(engine, WindowSet::Contents::Empty, pages), m_window(m_set.show(size)) {
    m_set.view.selectPage(page);
    Stage::wait(50);
}

void PageView::type(const QString &text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&m_window, &press);
    Stage::wait(50);
}

void PageView::press(int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(&m_window, &press);
    QCoreApplication::sendEvent(&m_window, &release);
    Stage::wait(50);
}

} // namespace velmo::screenshots
