#include "ui/controls/symbol_drawing.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// The stroke on the drawings' grid of 24 (a product decision); the drawings themselves say 1.75.
QByteArray strokeOf(SymbolWeight weight) {
    switch (weight) {
    case SymbolWeight::Light:
        return "1.1";
    case SymbolWeight::Regular:
        return "1.75";
    case SymbolWeight::Medium:
        return "2.0";
    case SymbolWeight::Semibold:
        return "2.25";
    case SymbolWeight::Bold:
        return "2.5";
    }
    return "1.75";
}

QByteArray storedDrawing(QStringView name) {
    QFile file(u":/velmo/symbols/%1.svg"_s.arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

int symbolBoxSide(int pointSize) {
    return 2 * qRound(pointSize * 0.6);
}

QByteArray symbolDrawing(QStringView name, SymbolWeight weight, const QColor &color) {
    return storedDrawing(name)
        .replace("currentColor", color.name().toLatin1())
        .replace("stroke-width=\"1.75\"", "stroke-width=\"" + strokeOf(weight) + '"');
}

void paintSymbol(QPainter &painter, const QRectF &box, QStringView name, SymbolWeight weight,
                 const QColor &color) {
    QSvgRenderer renderer(symbolDrawing(name, weight, color));
    if (!renderer.isValid())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(painter.opacity() * color.alphaF());
    renderer.render(&painter, box);
    painter.restore();
}

QPixmap symbolPixmap(QStringView name, SymbolWeight weight, const QColor &color, int side) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paintSymbol(painter, QRectF(0, 0, side, side), name, weight, color);
    return pixmap;
}

} // namespace velmo
