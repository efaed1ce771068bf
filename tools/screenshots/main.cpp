#include "stage.h"
#include "ui/controls/interface_setup.h"

#include <QDir>
#include <QGuiApplication>
#include <cstdio>

using namespace velmo;
using namespace velmo::screenshots;

/// usage: velmo_screenshots FOLDER [SCENE...]; without scenes, all of them.
int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    prepareInterface();
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 2 || !QDir().mkpath(arguments[1])) {
        std::fprintf(stderr, "usage: velmo_screenshots FOLDER [SCENE...]\n");
        return 2;
    }
    const QStringList wanted = arguments.mid(2);
    Stage stage(arguments[1]);
    for (const Scene &scene : accountScenes() + controlScenes() + floatingScenes() + modeScenes() +
                                  onboardingScenes() + settingsScenes() + speechScenes() + windowScenes()) {
        if (wanted.isEmpty() || wanted.contains(scene.name))
            scene.play(stage);
    }
    return stage.succeeded() ? 0 : 1;
}
