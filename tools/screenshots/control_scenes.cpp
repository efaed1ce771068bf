#include "stage.h"

#include <QQuickView>

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

QList<Scene> controlScenes() {
    return {{u"controls"_s, [](Stage &stage) {
                 QQuickView view(&stage.engine(), nullptr);
                 view.setSource(QUrl(u"qrc:/qt-project.org/imports/Velmo/Gallery/Gallery.qml"_s));
                 view.show();
                 stage.photograph(view, u"controls"_s);
             }}};
}

} // namespace velmo::screenshots
