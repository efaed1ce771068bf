#pragma once

#include <QFont>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// A line of figures of equal width, as times of day below each other need them. Qt 6.4 cannot ask a font for its own.
class TabularText : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text NOTIFY changed)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit TabularText(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

protected:
    void componentComplete() override;

Q_SIGNALS:
    void changed();

private:
    void measure();
    [[nodiscard]] qreal widthOf(QChar character) const;

    QString m_text;
    QFont m_font;
    QColor m_color;
    qreal m_figureWidth = 0; ///< Of the widest figure.
};

} // namespace velmo
