#include "ui/controls/symbol.h"

namespace velmo {

Symbol::Symbol(QQuickItem *parent) : QQuickPaintedItem(parent) {
    fitBox();
    connect(this, &Symbol::drawingChanged, this, [this] { update(); });
}

void Symbol::setPointSize(int size) {
    if (size == m_pointSize)
        return;
    m_pointSize = size;
    fitBox();
    Q_EMIT drawingChanged();
}

void Symbol::paint(QPainter *painter) {
    paintSymbol(*painter, boundingRect(), m_name, static_cast<SymbolWeight>(m_weight), m_color);
}

void Symbol::fitBox() {
    const int side = symbolBoxSide(m_pointSize);
    setImplicitSize(side, side);
}

} // namespace velmo
