#include "ui/flow/flow_layout.h"

#include "ui/flow/flow_placement.h"

namespace velmo {

void FlowLayout::setSpacing(qreal spacing) {
    if (spacing == m_spacing)
        return;
    m_spacing = spacing;
    polish();
    Q_EMIT spacingChanged();
}

void FlowLayout::itemChange(ItemChange change, const ItemChangeData &data) {
    if (change == ItemChildAddedChange)
        follow(data.item);
    else if (change == ItemChildRemovedChange)
        data.item->disconnect(this);
    polish();
    QQuickItem::itemChange(change, data);
}

void FlowLayout::geometryChange(const QRectF &geometry, const QRectF &oldGeometry) {
    if (geometry.width() != oldGeometry.width())
        polish();
    QQuickItem::geometryChange(geometry, oldGeometry);
}

void FlowLayout::updatePolish() {
    const QList<QQuickItem *> children = placedChildren();
    QList<QSizeF> sizes;
    for (const QQuickItem *child : children)
        sizes.append(child->size());
    const FlowPlacement placement = flowPlacement(sizes, m_spacing, width());
    for (qsizetype at = 0; at < children.size(); ++at)
        children[at]->setPosition(placement.places[at]);
    setImplicitSize(placement.size.width(), placement.size.height());
}

/// A Repeater among the children is not one that can be seen.
QList<QQuickItem *> FlowLayout::placedChildren() const {
    QList<QQuickItem *> children = childItems();
    children.removeIf(
        [](const QQuickItem *child) { return !child->isVisible() || child->inherits("QQuickRepeater"); });
    return children;
}

void FlowLayout::follow(QQuickItem *child) {
    connect(child, &QQuickItem::widthChanged, this, &QQuickItem::polish);
    connect(child, &QQuickItem::heightChanged, this, &QQuickItem::polish);
    connect(child, &QQuickItem::visibleChanged, this, &QQuickItem::polish);
}

} // namespace velmo
