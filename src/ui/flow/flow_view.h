#pragma once

#include <QAbstractItemModel>
#include <QFont>
#include <QHash>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <functional>
#include <utility>

namespace velmo {

/// The rows of a model as items of one height, laid out like words: thousands of them, of which only those near the
/// visible part of the page exist. An item is as wide as one of its texts with a padding, or as the whole view.
///
/// A delegate has the required properties `index`, `isCurrent` and the roles of the model. For the keyboard the view is
/// one stop: the current item has the focus, the arrow keys move it.
class FlowView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QAbstractItemModel *model READ model WRITE setModel NOTIFY setUp)
    Q_PROPERTY(QQmlComponent *delegate MEMBER m_delegate NOTIFY setUp)
    /// The contentItem of the Flickable the view lies in: what moves when the page scrolls.
    Q_PROPERTY(QQuickItem *scrolledItem READ scrolledItem WRITE setScrolledItem NOTIFY setUp)
    Q_PROPERTY(qreal spacing MEMBER m_spacing NOTIFY setUp)
    Q_PROPERTY(qreal itemHeight MEMBER m_itemHeight NOTIFY setUp)
    /// The role of the text an item is as wide as; none: as the view.
    Q_PROPERTY(QByteArray measuredRole MEMBER m_measuredRole NOTIFY setUp)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY setUp)
    Q_PROPERTY(qreal itemPadding MEMBER m_itemPadding NOTIFY setUp)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int currentIndex READ currentIndex NOTIFY currentIndexChanged)

public:
    explicit FlowView(QQuickItem *parent = nullptr);
    ~FlowView() override;

    [[nodiscard]] QAbstractItemModel *model() const { return m_model; }
    void setModel(QAbstractItemModel *model);
    [[nodiscard]] QQuickItem *scrolledItem() const { return m_scrolledItem; }
    void setScrolledItem(QQuickItem *item);

    [[nodiscard]] int count() const { return m_model ? m_model->rowCount() : 0; }
    [[nodiscard]] int currentIndex() const { return m_currentIndex; }

    /// The item of that row; null while it does not exist.
    [[nodiscard]] Q_INVOKABLE QQuickItem *itemAt(int row) const { return m_items.value(row); }

    /// Gives the keyboard to that row, or the nearest there is.
    Q_INVOKABLE void focusRow(int row);

Q_SIGNALS:
    void setUp();
    void countChanged();
    void currentIndexChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &geometry, const QRectF &oldGeometry) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void updatePolish() override;

private:
    void insertRows(int first, int count);
    void removeRows(int first, int count);
    void focusAfterRemoval();
    void moveItems(const std::function<int(int)> &newRow);
    void followFocus();
    void placeAgain();
    void placeRows();
    [[nodiscard]] qreal idealWidth(int row);
    [[nodiscard]] std::pair<int, int> rowsInSight() const;
    [[nodiscard]] int rowBeside(int row, int line) const;
    void showRow(int row);
    void putAway(QQuickItem *item);
    [[nodiscard]] QQuickItem *makeItem(int row);
    void fill(QQuickItem &item, int row);
    [[nodiscard]] QVariantMap valuesOf(int row) const;
    [[nodiscard]] QVariantMap wantedValues(const QQuickItem &item, int row) const;
    void setCurrentIndex(int row);

    QPointer<QAbstractItemModel> m_model;
    QPointer<QQmlComponent> m_delegate;
    QPointer<QQuickItem> m_scrolledItem;
    qreal m_spacing = 0;
    qreal m_itemHeight = 0;
    QByteArray m_measuredRole;
    QFont m_font;
    qreal m_itemPadding = 0;
    int m_currentIndex = 0;

    bool m_placesAreOld = true;
    QList<QSizeF> m_sizes; ///< By row.
    QList<QPointF> m_places;
    QHash<QString, qreal> m_textWidths;
    QHash<int, QQuickItem *> m_items; ///< By row; those near the visible part.
    QList<QQuickItem *> m_spareItems;
};

} // namespace velmo
