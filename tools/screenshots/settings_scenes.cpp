#include "desks/setup_desk.h"
#include "page_view.h"
#include "stage.h"

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

namespace {

/// Of somebody who has chosen a few languages.
struct SettingsDesk : testing::SettingsDesk {
    SettingsDesk() {
        desktop.preferences.set(keys::selectedLanguages, u"en,no,sv"_s);
        desktop.preferences.set(keys::deviceId, u"5d0c9a52-7a1e-4c0b-9f3e-2b8a61d4e7c3"_s);
        desktop.watch.noteWrite();
        desktop.queue.runPosted();
        desktop.listener.setupFnKey();
        desktop.loginItem.isOn = true;
    }

    void loseKeys() {
        desktop.accessibility.trusted = false;
        desktop.listener.stopListening();
    }
};

Scene scene(const QString &name, QSize size, const std::function<void(SettingsDesk &, PageView &)> &then = {},
            const std::function<void(SettingsDesk &)> &set = {}) {
    return {name, [=](Stage &stage) {
                SettingsDesk desk;
                if (set)
                    set(desk);
                PageView page(stage.engine(), MainWindowView::Settings, {.settings = &desk.view}, size);
                if (then)
                    then(desk, page);
                stage.photograph(page.window(), name);
            }};
}

} // namespace

QList<Scene> settingsScenes() {
    const QSize ordinary = PageView::ordinarySize;
    const QSize whole(900, 1140);
    return {
        scene(u"settings"_s, ordinary),
        scene(u"settings-min"_s, PageView::smallestSize),
        scene(u"settings-full"_s, whole),
        scene(u"settings-picker"_s, ordinary,
              [](SettingsDesk &, PageView &page) {
                  for (const int key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space, Qt::Key_Down})
                      page.press(key);
              }),
        scene(u"settings-capture"_s, whole,
              [](SettingsDesk &desk, PageView &) { desk.view.triggerKey()->begin(); }),
        scene(u"settings-refusal"_s, whole,
              [](SettingsDesk &desk, PageView &) {
                  desk.view.triggerKey()->begin();
                  desk.view.triggerKey()->press(Qt::Key_A, 38);
              }),
        scene(u"settings-missing"_s, whole, {}, [](SettingsDesk &desk) { desk.loseKeys(); }),
    };
}

} // namespace velmo::screenshots
