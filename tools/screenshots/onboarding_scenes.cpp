#include "desks/setup_desk.h"
#include "stage.h"
#include "ui/onboarding/onboarding_window_controller.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

namespace {

using testing::OnboardingDesk;

Scene scene(const QString &name, const std::function<void(OnboardingDesk &)> &set,
            const std::function<void(OnboardingDesk &)> &then = {}) {
    return {name, [=](Stage &stage) {
                OnboardingDesk desk;
                desk.service.runsWhisper();
                set(desk);
                OnboardingWindowController controller(stage.engine(), desk.desktop.preferences, desk.view);
                controller.show();
                controller.window()->setMaximumSize({520, 680}); // larger than the screen of no display
                controller.window()->resize(520, 680);
                desk.service.http.waitUntilIdle();
                desk.desktop.queue.runPosted();
                if (then)
                    then(desk);
                stage.photograph(*controller.window(), name);
            }};
}

void setMissingKey(OnboardingDesk &desk) {
    desk.desktop.tap.canStart = false;
    desk.desktop.microphone.isPresent = false;
}

} // namespace

QList<Scene> onboardingScenes() {
    return {
        scene(u"onboarding-1"_s,
              [](OnboardingDesk &desk) {
                  desk.desktop.accessibility.trusted = false;
                  desk.desktop.microphone.isPresent = false;
              }),
        scene(u"onboarding-2"_s, setMissingKey),
        scene(u"onboarding-capture"_s, setMissingKey, [](OnboardingDesk &desk) { desk.view.act(); }),
        scene(u"onboarding-3"_s, [](OnboardingDesk &desk) { desk.desktop.microphone.isPresent = false; }),
        scene(u"onboarding-done"_s, [](OnboardingDesk &desk) { desk.desktop.listener.setupFnKey(); }),
        scene(u"onboarding-english"_s,
              [](OnboardingDesk &desk) {
                  desk.desktop.listener.setupFnKey();
                  desk.service.runs(R"("engine":"PocketSphinx")", R"("en")");
              }),
        scene(u"onboarding-silent"_s,
              [](OnboardingDesk &desk) {
                  setMissingKey(desk);
                  desk.service.server.react("/health", {{{}, testing::Reaction::Then::Close}});
              }),
    };
}

} // namespace velmo::screenshots
