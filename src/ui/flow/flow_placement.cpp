#include "ui/flow/flow_placement.h"

#include <algorithm>

namespace velmo {

FlowPlacement flowPlacement(const QList<QSizeF> &sizes, qreal spacing, qreal availableWidth) {
    FlowPlacement placement;
    QPointF place;
    qreal lineHeight = 0;
    qreal widest = 0;
    for (const QSizeF &size : sizes) {
        if (place.x() > 0 && place.x() + size.width() > availableWidth) {
            place = {0, place.y() + lineHeight + spacing};
            lineHeight = 0;
        }
        placement.places.append(place);
        lineHeight = std::max(lineHeight, size.height());
        place.rx() += size.width() + spacing;
        widest = std::max(widest, place.x());
    }
    placement.size = {widest, place.y() + lineHeight};
    return placement;
}

} // namespace velmo
