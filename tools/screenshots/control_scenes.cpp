#include "stage.h"

#include <QQuickView>

namespace velmo::screenshots {

QList<Scene> controlScenes() {
    return {{QStringLiteral("controls"), [](Stage &stage) {
                 QQuickView view(&stage.engine(), nullptr);
                 view.setSource(QUrl(QStringLiteral("qrc:/screenshots/Gallery.qml")));
                 view.show();
                 stage.photograph(view, QStringLiteral("controls"));
             }}};
}

} // namespace velmo::screenshots
