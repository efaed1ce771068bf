#pragma once

#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// Lines of fixed height for text that can be selected: QML's TextEdit has only those of its font. Main thread.
class LineHeight : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Sets the height of each line, in logical pixels. A text that is set later has the font's lines again.
    Q_INVOKABLE static void set(QQuickTextDocument *document, qreal pixels);
};

} // namespace velmo
