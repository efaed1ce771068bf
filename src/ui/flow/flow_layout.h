#pragma once

#include <QQuickItem>

namespace velmo {

/// Lays its visible children out as flowPlacement() does, in the width it is given.
class FlowLayout : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal spacing READ spacing WRITE setSpacing NOTIFY spacingChanged)

public:
    explicit FlowLayout(QQuickItem *parent = nullptr) : QQuickItem(parent) {}

    [[nodiscard]] qreal spacing() const { return m_spacing; }
    void setSpacing(qreal spacing);

Q_SIGNALS:
    void spacingChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &geometry, const QRectF &oldGeometry) override;
    void updatePolish() override;

private:
    [[nodiscard]] QList<QQuickItem *> placedChildren() const;
    void follow(QQuickItem *child);

    qreal m_spacing = 0;
};

} // namespace velmo
