#include "desks/mode_desk.h"
#include "page_view.h"
#include "stage.h"

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

namespace {

using testing::ModeDesk;

/// Sets the desk, opens the page, and does what is left to do before the picture is taken.
Scene scene(const QString &name, QSize size, const std::function<void(ModeDesk &)> &set,
            const std::function<void(ModeDesk &, PageView &)> &then = {}) {
    return {name, [=](Stage &stage) {
                ModeDesk desk;
                set(desk);
                PageView page(stage.engine(), MainWindowView::Mode, {.mode = &desk.view}, size);
                desk.service.http.waitUntilIdle();
                desk.queue.runPosted();
                if (then)
                    then(desk, page);
                stage.photograph(page.window(), name);
            }};
}

void setFixGrammar(ModeDesk &desk) {
    desk.addCustomModes();
    desk.view.choose(u"fix-grammar"_s);
}

} // namespace

QList<Scene> modeScenes() {
    constexpr QSize ordinary = PageView::ordinarySize;
    return {
        scene(u"mode"_s, ordinary, setFixGrammar),
        scene(u"mode-min"_s, PageView::smallestSize, setFixGrammar),
        scene(u"mode-focus"_s, ordinary, setFixGrammar,
              [](ModeDesk &, PageView &page) {
                  for (const int key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down})
                      page.press(key);
              }),
        scene(u"mode-off"_s, ordinary,
              [](ModeDesk &desk) {
                  desk.view.choose(u"summarize"_s);
                  desk.view.setSmartFormatting(false);
              }),
        scene(u"mode-without"_s, PageView::smallestSize,
              [](ModeDesk &desk) {
                  setFixGrammar(desk);
                  desk.service.runsWhisper();
              }),
        scene(
            u"mode-new"_s, ordinary, [](ModeDesk &) {},
            [](ModeDesk &desk, PageView &) { desk.view.openNewSheet(); }),
        scene(u"mode-edit"_s, ordinary, setFixGrammar,
              [](ModeDesk &desk, PageView &) { desk.view.openEditSheet(0); }),
    };
}

} // namespace velmo::screenshots
