#include "ui/models/main_window_view.h"

#include <utility>

namespace velmo {

MainWindowView::MainWindowView(QString version) : m_version(std::move(version)) {}

void MainWindowView::selectPage(int page) {
    if (page == m_selectedPage || page < Home || page > Settings)
        return;
    m_selectedPage = page;
    Q_EMIT selectedPageChanged();
}

QList<SidebarItem> MainWindowView::mainPages() {
    return {
        {Home, tr("Home"), QStringLiteral("house")},
        {Dictionary, tr("Dictionary"), QStringLiteral("book")},
        {Snippets, tr("Snippets"), QStringLiteral("text.quote")},
        {Mode, tr("Mode"), QStringLiteral("textformat")},
        {Notes, tr("Notes"), QStringLiteral("note.text")},
    };
}

QList<SidebarItem> MainWindowView::lowerPages() {
    return {
        {Account, tr("Account"), QStringLiteral("person.circle")},
        {Settings, tr("Settings"), QStringLiteral("gearshape")},
    };
}

void MainWindowView::openClosingNotice() {
    if (m_showClosingNotice)
        return;
    m_showClosingNotice = true;
    Q_EMIT showClosingNoticeChanged();
}

void MainWindowView::dismissClosingNotice() {
    if (!m_showClosingNotice)
        return;
    m_showClosingNotice = false;
    Q_EMIT showClosingNoticeChanged();
    Q_EMIT closingNoticeRead();
}

} // namespace velmo
