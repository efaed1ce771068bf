#pragma once

#include "ui/controls/symbol_drawing.h"

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// A symbol of the interface in one colour, crisp at every scale. Decoration only: what it means is said by the
/// accessible name of the control that holds it.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY drawingChanged)
    Q_PROPERTY(int pointSize READ pointSize WRITE setPointSize NOTIFY drawingChanged)
    Q_PROPERTY(Weight weight MEMBER m_weight NOTIFY drawingChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY drawingChanged)

public:
    enum Weight { Light, Regular, Medium, Semibold, Bold };
    Q_ENUM(Weight)

    explicit Symbol(QQuickItem *parent = nullptr);

    [[nodiscard]] int pointSize() const { return m_pointSize; }
    void setPointSize(int size);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void drawingChanged();

private:
    void fitBox();

    QString m_name;
    int m_pointSize = 13;
    Weight m_weight = Regular;
    QColor m_color = Qt::black;
};

} // namespace velmo
