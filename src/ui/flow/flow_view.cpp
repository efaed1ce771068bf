#include "ui/flow/flow_view.h"

#include "ui/flow/flow_placement.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QQmlContext>
#include <QQuickWindow>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// Items beyond the visible part that are kept ready for scrolling, in heights of that part.
constexpr qreal kMargin = 0.5;
/// Items kept for use again once they are out of sight.
constexpr qsizetype kMostSpareItems = 100;

const QString kIndex = u"index"_s;
const QString kIsCurrent = u"isCurrent"_s;

} // namespace

FlowView::FlowView(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemIsFocusScope);
    setActiveFocusOnTab(true);
    connect(this, &FlowView::setUp, this, &FlowView::placeAgain);
    connect(this, &QQuickItem::windowChanged, this, [this](QQuickWindow *window) {
        if (window)
            connect(window, &QQuickWindow::activeFocusItemChanged, this, &FlowView::followFocus,
                    Qt::UniqueConnection);
    });
}

FlowView::~FlowView() = default;

void FlowView::setModel(QAbstractItemModel *model) {
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    removeRows(0, static_cast<int>(m_sizes.size()));
    if (model) {
        connect(model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { insertRows(first, last - first + 1); });
        connect(model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { removeRows(first, last - first + 1); });
        connect(model, &QAbstractItemModel::dataChanged, this, &FlowView::placeAgain);
    }
    Q_EMIT setUp();
    Q_EMIT countChanged();
}

void FlowView::setScrolledItem(QQuickItem *item) {
    if (m_scrolledItem) {
        m_scrolledItem->disconnect(this);
        m_scrolledItem->parentItem()->disconnect(this);
    }
    m_scrolledItem = item;
    if (item) {
        connect(item, &QQuickItem::yChanged, this, &QQuickItem::polish);
        connect(item->parentItem(), &QQuickItem::heightChanged, this, &QQuickItem::polish);
    }
    Q_EMIT setUp();
}

void FlowView::focusRow(int row) {
    if (count() == 0)
        return;
    setCurrentIndex(std::clamp(row, 0, count() - 1));
    placeRows();
    showRow(m_currentIndex);
    if (QQuickItem *item = itemAt(m_currentIndex))
        item->forceActiveFocus(Qt::TabFocusReason);
}

void FlowView::componentComplete() {
    QQuickItem::componentComplete();
    placeAgain();
}

void FlowView::geometryChange(const QRectF &geometry, const QRectF &oldGeometry) {
    if (geometry.width() != oldGeometry.width())
        placeAgain();
    QQuickItem::geometryChange(geometry, oldGeometry);
}

void FlowView::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Left:
        return focusRow(m_currentIndex - 1);
    case Qt::Key_Right:
        return focusRow(m_currentIndex + 1);
    case Qt::Key_Up:
        return focusRow(rowBeside(m_currentIndex, -1));
    case Qt::Key_Down:
        return focusRow(rowBeside(m_currentIndex, 1));
    case Qt::Key_Home:
        return focusRow(0);
    case Qt::Key_End:
        return focusRow(count() - 1);
    default:
        event->ignore();
    }
}

void FlowView::focusInEvent(QFocusEvent *event) {
    QQuickItem::focusInEvent(event);
    if (!scopedFocusItem())
        focusRow(m_currentIndex);
}

void FlowView::updatePolish() {
    placeRows();
    const auto [first, end] = rowsInSight();
    for (const int row : m_items.keys()) {
        if ((row < first || row >= end) && row != m_currentIndex)
            putAway(m_items.take(row));
    }
    for (int row = first; row < end; ++row)
        showRow(row);
}

void FlowView::insertRows(int first, int count) {
    moveItems([=](int row) { return row < first ? row : row + count; });
    if (m_currentIndex >= first && !m_items.isEmpty() && hasActiveFocus())
        setCurrentIndex(m_currentIndex + count);
    placeAgain();
    Q_EMIT countChanged();
}

void FlowView::removeRows(int first, int count) {
    const int end = first + count;
    const bool lostFocus = hasActiveFocus() && m_currentIndex >= first && m_currentIndex < end;
    QList<QQuickItem *> leaving;
    for (int row = first; row < end; ++row) {
        if (QQuickItem *item = m_items.take(row))
            leaving.append(item);
    }
    moveItems([=](int row) { return row < first ? row : row - count; });
    const int current = m_currentIndex < first ? m_currentIndex : std::max(first, m_currentIndex - count);
    setCurrentIndex(std::clamp(current, 0, std::max(0, this->count() - 1)));
    placeAgain();
    for (QQuickItem *item :
         leaving) // last: where one has the keyboard, this view gets it and shows its current row
        putAway(item);
    Q_EMIT countChanged();
    if (lostFocus)
        focusAfterRemoval();
}

/// Whoever deletes by the keyboard goes on from the row that took the place.
void FlowView::focusAfterRemoval() {
    if (count() > 0)
        focusRow(m_currentIndex);
    else if (QQuickItem *previous = nextItemInFocusChain(false))
        previous->forceActiveFocus(Qt::BacktabFocusReason);
}

void FlowView::moveItems(const std::function<int(int)> &newRow) {
    QHash<int, QQuickItem *> moved;
    for (auto item = m_items.cbegin(); item != m_items.cend(); ++item)
        moved.insert(newRow(item.key()), item.value());
    m_items = moved;
}

void FlowView::followFocus() {
    const QQuickItem *focused = window() ? window()->activeFocusItem() : nullptr;
    for (auto item = m_items.cbegin(); focused && item != m_items.cend(); ++item) {
        if (item.value() == focused || item.value()->isAncestorOf(focused))
            return setCurrentIndex(item.key());
    }
}

void FlowView::placeAgain() {
    m_placesAreOld = true;
    polish();
}

void FlowView::placeRows() {
    if (!m_placesAreOld || !isComponentComplete())
        return;
    m_placesAreOld = false;
    m_sizes.clear();
    for (int row = 0; row < count(); ++row)
        m_sizes.append({std::min(idealWidth(row), width()), m_itemHeight});
    FlowPlacement placement = flowPlacement(m_sizes, m_spacing, width());
    m_places = std::move(placement.places);
    setImplicitSize(placement.size.width(), placement.size.height());
    for (const int row : m_items.keys())
        fill(*m_items[row], row);
}

qreal FlowView::idealWidth(int row) {
    if (m_measuredRole.isEmpty())
        return width();
    const QString text = valuesOf(row).value(QString::fromLatin1(m_measuredRole)).toString();
    auto known = m_textWidths.constFind(text);
    if (known == m_textWidths.constEnd())
        known = m_textWidths.insert(text, std::ceil(QFontMetricsF(m_font).horizontalAdvance(text)));
    return *known + m_itemPadding;
}

/// The first row and the one after the last that exist, for the part of the page that is shown.
std::pair<int, int> FlowView::rowsInSight() const {
    if (!m_scrolledItem || m_places.isEmpty() || width() <= 0)
        return {0, 0};
    const QQuickItem &viewport = *m_scrolledItem->parentItem();
    const qreal margin = kMargin * viewport.height();
    const qreal top = mapFromItem(&viewport, {0, 0}).y() - margin;
    const qreal bottom = top + viewport.height() + 2 * margin;
    const auto isAbove = [](const QPointF &place, qreal y) { return place.y() < y; };
    const auto first = std::lower_bound(m_places.begin(), m_places.end(), top - m_itemHeight, isAbove);
    const auto end = std::lower_bound(first, m_places.end(), bottom, isAbove);
    return {static_cast<int>(first - m_places.begin()), static_cast<int>(end - m_places.begin())};
}

/// The row in the line above (-1) or below (1) whose middle is nearest; the row itself at the edge.
int FlowView::rowBeside(int row, int line) const {
    if (row >= m_places.size())
        return row;
    const auto middle = [this](int at) { return m_places[at].x() + m_sizes[at].width() / 2; };
    const qreal y = m_places[row].y() + line * (m_itemHeight + m_spacing);
    int nearest = row;
    for (int at = 0; at < m_places.size(); ++at) {
        const bool isNearer =
            nearest == row || std::abs(middle(at) - middle(row)) < std::abs(middle(nearest) - middle(row));
        if (qFuzzyCompare(1 + m_places[at].y(), 1 + y) && isNearer)
            nearest = at;
    }
    return nearest;
}

void FlowView::showRow(int row) {
    if (m_items.contains(row) || row >= m_places.size())
        return;
    QQuickItem *item = m_spareItems.isEmpty() ? makeItem(row) : m_spareItems.takeLast();
    if (!item)
        return;
    m_items.insert(row, item);
    fill(*item, row);
    item->setVisible(true);
}

void FlowView::putAway(QQuickItem *item) {
    item->setFocus(false);
    item->setVisible(false);
    if (m_spareItems.size() < kMostSpareItems)
        m_spareItems.append(item);
    else
        item->deleteLater();
}

QQuickItem *FlowView::makeItem(int row) {
    QObject *object = m_delegate ? m_delegate->beginCreate(m_delegate->creationContext()) : nullptr;
    auto *item = qobject_cast<QQuickItem *>(object);
    if (item) {
        item->setParent(this);
        item->setParentItem(this);
        m_delegate->setInitialProperties(item, wantedValues(*item, row));
    }
    if (object)
        m_delegate->completeCreate();
    return item;
}

/// The delegate need not have a property for each role.
QVariantMap FlowView::wantedValues(const QQuickItem &item, int row) const {
    QVariantMap values = valuesOf(row);
    for (const QString &name : values.keys()) {
        if (item.metaObject()->indexOfProperty(name.toLatin1().constData()) < 0)
            values.remove(name);
    }
    return values;
}

void FlowView::fill(QQuickItem &item, int row) {
    const QVariantMap values = wantedValues(item, row);
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        item.setProperty(value.key().toLatin1().constData(), value.value());
    item.setPosition(m_places[row]);
    item.setSize(m_sizes[row]);
}

QVariantMap FlowView::valuesOf(int row) const {
    QVariantMap values{{kIndex, row}, {kIsCurrent, row == m_currentIndex}};
    const QHash<int, QByteArray> roles = m_model->roleNames();
    for (auto role = roles.cbegin(); role != roles.cend(); ++role)
        values.insert(QString::fromLatin1(role.value()), m_model->index(row, 0).data(role.key()));
    return values;
}

void FlowView::setCurrentIndex(int row) {
    if (row == m_currentIndex)
        return;
    for (const int changed : {std::exchange(m_currentIndex, row), row}) {
        if (QQuickItem *item = itemAt(changed))
            item->setProperty(kIsCurrent.toLatin1().constData(), changed == row);
    }
    Q_EMIT currentIndexChanged();
}

} // namespace velmo
