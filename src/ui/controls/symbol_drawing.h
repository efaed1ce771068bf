#pragma once

#include <QByteArray>
#include <QColor>
#include <QStringView>

class QPainter;
class QPixmap;
class QRectF;

namespace velmo {

/// How strongly a symbol is drawn.
enum class SymbolWeight { Light, Regular, Medium, Semibold, Bold };

/// The side of the square a symbol of that point size fills: one and a fifth of it, rounded to an even number so that
/// its middle lies between two pixels (a product decision).
[[nodiscard]] int symbolBoxSide(int pointSize);

/// The drawing of that name in one colour, as SVG; empty when there is none.
[[nodiscard]] QByteArray symbolDrawing(QStringView name, SymbolWeight weight, const QColor &color);

/// Fills the box with the symbol. Unknown names paint nothing. Any thread.
void paintSymbol(QPainter &painter, const QRectF &box, QStringView name, SymbolWeight weight,
                 const QColor &color);

/// The symbol on a transparent square, for icons outside our windows.
/// @param side in device pixels.
[[nodiscard]] QPixmap symbolPixmap(QStringView name, SymbolWeight weight, const QColor &color, int side);

} // namespace velmo
