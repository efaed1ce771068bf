#pragma once

#include <QList>
#include <QPointF>
#include <QSizeF>

namespace velmo {

/// Where things of different widths go that stand in lines like words.
struct FlowPlacement {
    QList<QPointF> places; ///< Of the upper left corners.
    /// The width counts the spacing after the last thing of the widest line.
    QSizeF size;
};

/// Left to right, a new line where the next would pass the available width. What is wider than that has a line of its
/// own.
[[nodiscard]] FlowPlacement flowPlacement(const QList<QSizeF> &sizes, qreal spacing, qreal availableWidth);

} // namespace velmo
