#include "ui/models/main_window_view.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace velmo {

MainWindowView::MainWindowView(QString version) : m_version(std::move(version)) {}

void MainWindowView::selectPage(int page) {
    if (page == m_selectedPage || page < Home || page > Speech)
        return;
    m_selectedPage = page;
    Q_EMIT selectedPageChanged();
}

QList<SidebarItem> MainWindowView::mainPages() {
    return {
        {Home, tr("Home"), u"house"_s},
        {Dictionary, tr("Dictionary"), u"book"_s},
        {Snippets, tr("Snippets"), u"text.quote"_s},
        {Mode, tr("Mode"), u"textformat"_s},
        {Notes, tr("Notes"), u"note.text"_s},
    };
}

QList<SidebarItem> MainWindowView::lowerPages() {
    return {
        {Account, tr("Account"), u"person.circle"_s},
        {Settings, tr("Settings"), u"gearshape"_s},
        {Speech, tr("Speech"), u"waveform"_s},
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
