#include "ui/controls/tabular_text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace velmo {

TabularText::TabularText(QQuickItem *parent) : QQuickPaintedItem(parent) {
    connect(this, &TabularText::changed, this, &TabularText::measure);
}

void TabularText::paint(QPainter *painter) {
    painter->setFont(m_font);
    painter->setPen(m_color);
    const QFontMetricsF metrics(m_font);
    qreal x = 0;
    for (const QChar character : m_text) {
        const qreal width = widthOf(character);
        painter->drawText(QPointF(x + (width - metrics.horizontalAdvance(character)) / 2, baselineOffset()),
                          character);
        x += width;
    }
}

void TabularText::componentComplete() {
    QQuickPaintedItem::componentComplete();
    measure();
}

void TabularText::measure() {
    if (!isComponentComplete())
        return;
    const QFontMetricsF metrics(m_font);
    m_figureWidth = 0;
    for (char16_t figure = u'0'; figure <= u'9'; ++figure)
        m_figureWidth = std::max(m_figureWidth, metrics.horizontalAdvance(QChar(figure)));
    qreal width = 0;
    for (const QChar character : m_text)
        width += widthOf(character);
    setImplicitSize(std::ceil(width), std::ceil(metrics.height()));
    setBaselineOffset(metrics.ascent());
    update();
}

qreal TabularText::widthOf(QChar character) const {
    return character.isDigit() ? m_figureWidth : QFontMetricsF(m_font).horizontalAdvance(character);
}

} // namespace velmo
