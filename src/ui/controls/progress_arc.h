#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// A thin ring of which a part is drawn strongly: what a ProgressRing turns.
class ProgressArc : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY drawingChanged)
    Q_PROPERTY(
        qreal turn MEMBER m_turn NOTIFY drawingChanged) ///< 0 to 1, where the strong part begins; 0 is up.

public:
    explicit ProgressArc(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void drawingChanged();

private:
    QColor m_color = Qt::black;
    qreal m_turn = 0;
};

} // namespace velmo
