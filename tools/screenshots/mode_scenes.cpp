#include "page_desks.h"
#include "page_view.h"
#include "stage.h"

namespace velmo::screenshots {

namespace {

/// Sets the desk, opens the page, and does what is left to do before the picture is taken.
Scene scene(const QString &name, QSize size, const std::function<void(ModeDesk &)> &set,
            const std::function<void(ModeDesk &, PageView &)> &then = {}) {
    return {name, [=](Stage &stage) {
                ModeDesk desk;
                set(desk);
                PageView page(stage.engine(), MainWindowView::Mode, {.mode = &desk.view}, size);
                if (then)
                    then(desk, page);
                stage.photograph(page.window(), name);
            }};
}

void setFixGrammar(ModeDesk &desk) {
    desk.addCustomModes();
    desk.view.choose(QStringLiteral("fix-grammar"));
}

} // namespace

QList<Scene> modeScenes() {
    constexpr QSize ordinary = PageView::ordinarySize;
    return {
        scene(QStringLiteral("mode"), ordinary, setFixGrammar),
        scene(QStringLiteral("mode-min"), PageView::smallestSize, setFixGrammar),
        scene(QStringLiteral("mode-focus"), ordinary, setFixGrammar,
              [](ModeDesk &, PageView &page) {
                  for (const int key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down})
                      page.press(key);
              }),
        scene(QStringLiteral("mode-off"), ordinary,
              [](ModeDesk &desk) {
                  desk.view.choose(QStringLiteral("summarize"));
                  desk.view.setSmartFormatting(false);
              }),
        scene(
            QStringLiteral("mode-new"), ordinary, [](ModeDesk &) {},
            [](ModeDesk &desk, PageView &) { desk.view.openNewSheet(); }),
        scene(QStringLiteral("mode-edit"), ordinary, setFixGrammar,
              [](ModeDesk &desk, PageView &) { desk.view.openEditSheet(0); }),
    };
}

} // namespace velmo::screenshots
