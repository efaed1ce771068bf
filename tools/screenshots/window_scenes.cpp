#include "stage.h"
#include "window_set.h"

#include <QCoreApplication>
#include <QMouseEvent>
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
                set.view.selectPage(page);
                stage.photograph(set.show(size), name);
            }};
}

/// A state that somebody has brought a page to.
Scene state(const QString &name, MainWindowView::SidebarPage page,
            const std::function<void(WindowSet &)> &act, Contents contents = Contents::Filled) {
    return {name, [=](Stage &stage) {
                WindowSet set(stage.engine(), contents);
                set.view.selectPage(page);
                QQuickWindow &window = set.show();
                Stage::wait(100);
                act(set);
                stage.photograph(window, name);
            }};
}

void search(WindowSet &set, const QString &text) {
    set.dictionary.setSearchText(text);
}

void write(WindowSet &set, const QString &trigger, const QString &expansion) {
    set.snippetsView.openAddSheet();
    set.snippetsView.sheet()->setTrigger(trigger);
    set.snippetsView.sheet()->setExpansion(expansion);
}

void rightClick(QQuickWindow &window, QPointF at) {
    for (const auto type : {QEvent::MouseMove, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto held = type == QEvent::MouseButtonPress ? Qt::RightButton : Qt::NoButton;
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::RightButton;
        QMouseEvent event(type, at, window.mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }
}

QList<Scene> states() {
    return {
        {u"home-menu"_s,
         [](Stage &stage) {
             WindowSet set(stage.engine(), Contents::Filled);
             set.home.dismissHeroCard();
             QQuickWindow &window = set.show();
             Stage::wait(500);
             rightClick(window, {400, 300});
             stage.photograph(window, u"home-menu"_s);
         }},
        state(u"home-undo"_s, MainWindowView::Home, [](WindowSet &set) { set.home.remove(u"3"_s); }),
        state(u"home-closing"_s, MainWindowView::Home, [](WindowSet &set) { set.view.openClosingNotice(); }),
        state(u"dictionary-search"_s, MainWindowView::Dictionary,
              [](WindowSet &set) {
                  set.dictionary.setNewWord(u"Trondheim"_s);
                  search(set, u"S"_s);
              }),
        state(u"dictionary-nomatch"_s, MainWindowView::Dictionary,
              [](WindowSet &set) { search(set, u"xyz"_s); }),
        state(u"snippets-add"_s, MainWindowView::Snippets,
              [](WindowSet &set) { set.snippetsView.openAddSheet(); }),
        state(u"snippets-edit"_s, MainWindowView::Snippets,
              [](WindowSet &set) { set.snippetsView.openEditSheet(3); }),
        state(u"snippets-duplicate"_s, MainWindowView::Snippets,
              [](WindowSet &set) {
                  write(set, u"Adr"_s, u"Storgata 15"_s);
                  set.snippetsView.sheet()->save();
              }),
    };
}

} // namespace

QList<Scene> windowScenes() {
    constexpr QSize smallest(700, 500);
    constexpr QSize large(1400, 900);
    return states() + QList<Scene>{
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
