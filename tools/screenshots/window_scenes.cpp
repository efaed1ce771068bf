#include "stage.h"
#include "window_set.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

namespace {

using Contents = WindowSet::Contents;

/// A page at one size.
Scene page(const QString &name, MainWindowView::SidebarPage page, Contents contents,
           QSize size = {900, 600}) {
    return {name, [=](Stage &stage) {
                WindowSet set(stage.engine(), contents);
                set.view().selectPage(page);
                stage.photograph(set.show(size), name);
            }};
}

} // namespace

QList<Scene> windowScenes() {
    constexpr QSize smallest(700, 500);
    constexpr QSize large(1400, 900);
    return {
        page(u"home"_s, MainWindowView::Home, Contents::Filled),
        page(u"home-empty"_s, MainWindowView::Home, Contents::Empty),
        page(u"home-overfull"_s, MainWindowView::Home, Contents::Overfull),
        page(u"home-min"_s, MainWindowView::Home, Contents::Filled, smallest),
        page(u"home-large"_s, MainWindowView::Home, Contents::Filled, large),
        page(u"dictionary"_s, MainWindowView::Dictionary, Contents::Filled),
        page(u"dictionary-empty"_s, MainWindowView::Dictionary, Contents::Empty),
        page(u"dictionary-overfull"_s, MainWindowView::Dictionary, Contents::Overfull),
        page(u"dictionary-min"_s, MainWindowView::Dictionary, Contents::Filled, smallest),
        page(u"snippets"_s, MainWindowView::Snippets, Contents::Filled),
        page(u"snippets-empty"_s, MainWindowView::Snippets, Contents::Empty),
        page(u"snippets-overfull"_s, MainWindowView::Snippets, Contents::Overfull),
        page(u"snippets-min"_s, MainWindowView::Snippets, Contents::Filled, smallest),
        page(u"notes"_s, MainWindowView::Notes, Contents::Filled),
    };
}

} // namespace velmo::screenshots
