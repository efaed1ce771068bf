#pragma once

#include <QQuickItem>
#include <QRectF>
#include <QtQml/qqmlregistration.h>

namespace velmo {

/// The root of what a FloatingView shows, and what the window asks of it. Areas are in the content's coordinates.
class FloatingContent : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Whether what is translucent looks so; the window tells.
    Q_PROPERTY(bool composited READ isComposited NOTIFY compositedChanged)
    /// What takes the mouse; clicks elsewhere go to what lies beneath.
    Q_PROPERTY(QList<QRectF> inputAreas MEMBER m_inputAreas NOTIFY inputAreasChanged)
    /// What is drawn, shadows apart.
    Q_PROPERTY(QList<QRectF> solidAreas MEMBER m_solidAreas NOTIFY solidAreasChanged)
    /// How round their corners are at most; else it is half their height.
    Q_PROPERTY(qreal solidRadius MEMBER m_solidRadius NOTIFY solidRadiusChanged)

public:
    explicit FloatingContent(QQuickItem *parent = nullptr);

    [[nodiscard]] bool isComposited() const { return m_isComposited; }
    void setComposited(bool isComposited);

    [[nodiscard]] const QList<QRectF> &inputAreas() const { return m_inputAreas; }
    [[nodiscard]] const QList<QRectF> &solidAreas() const { return m_solidAreas; }
    [[nodiscard]] qreal solidRadius() const { return m_solidRadius; }

Q_SIGNALS:
    void compositedChanged();
    void inputAreasChanged();
    void solidAreasChanged();
    void solidRadiusChanged();
    /// The person wants the window to go.
    void closeRequested();

private:
    bool m_isComposited = true;
    QList<QRectF> m_inputAreas;
    QList<QRectF> m_solidAreas;
    qreal m_solidRadius = 0;
};

/// Lets the areas be written as lists.
struct Areas {
    Q_GADGET
    QML_FOREIGN(QList<QRectF>)
    QML_ANONYMOUS
    QML_SEQUENTIAL_CONTAINER(QRectF)
};

} // namespace velmo
