#include "ui/floating/floating_view.h"

#include <QPainterPath>
#include <QQuickItem>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Two windows that both want to be on top must not keep each other busy.
constexpr auto kRaiseInterval = 500ms;

Qt::WindowFlags flagsFor(FloatingView::Keyboard keyboard) {
    Qt::WindowFlags flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                            Qt::X11BypassWindowManagerHint | Qt::NoDropShadowWindowHint;
    if (keyboard == FloatingView::Keyboard::Never)
        flags |= Qt::WindowDoesNotAcceptFocus;
    return flags;
}

QRegion roundedRegion(const QRectF &area, qreal largestRadius) {
    // A curve becomes a polygon of few corners when it is small.
    constexpr qreal kFineness = 16;
    const qreal radius = std::min(largestRadius, area.height() / 2);
    QPainterPath path;
    path.addRoundedRect(area, radius, radius);
    const QPolygonF polygon = path.toFillPolygon(QTransform::fromScale(kFineness, kFineness));
    return QRegion(QTransform::fromScale(1 / kFineness, 1 / kFineness).map(polygon).toPolygon());
}

} // namespace

FloatingView::FloatingView(QQmlEngine &engine, MainQueue &queue, FloatingWindows &desktop, Keyboard keyboard)
    : QQuickView(&engine, nullptr), m_queue(queue), m_desktop(desktop) {
    setFlags(flagsFor(keyboard));
    setTitle(u"Velmo"_s);
    setColor(Qt::transparent);
    setResizeMode(SizeRootObjectToView);
    m_watch = m_desktop.watch(
        {[this] { applyComposition(); }, [this] { comeForward(); }, [this] { Q_EMIT panelsChanged(); }});
}

FloatingView::~FloatingView() = default;

void FloatingView::setContent(const QUrl &component, QVariantMap properties) {
    properties.insert(u"composited"_s, m_desktop.isComposited());
    setInitialProperties(properties);
    setSource(component);
    if (!rootObject())
        return;
    connect(rootObject(), SIGNAL(inputAreasChanged()), this, SLOT(applyInputAreas()));
    connect(rootObject(), SIGNAL(solidAreasChanged()), this, SLOT(applySolidAreas()));
    connect(rootObject(), SIGNAL(solidRadiusChanged()), this, SLOT(applySolidAreas()));
    applyInputAreas();
    applySolidAreas();
}

void FloatingView::applyComposition() {
    rootObject()->setProperty("composited", m_desktop.isComposited());
    applySolidAreas();
}

void FloatingView::applyInputAreas() {
    const qreal ratio = devicePixelRatio();
    QList<QRect> region;
    for (const QRectF &area : areas("inputAreas"))
        region.append(QRectF(area.topLeft() * ratio, area.size() * ratio).toAlignedRect());
    m_desktop.setInputRegion(winId(), region);
}

void FloatingView::applySolidAreas() {
    QRegion mask;
    if (!m_desktop.isComposited()) {
        const qreal radius = rootObject()->property("solidRadius").toReal();
        for (const QRectF &area : areas("solidAreas"))
            mask += roundedRegion(area, radius);
    }
    if (mask != this->mask())
        setMask(mask);
}

void FloatingView::comeForward() {
    if (m_raiseTimer) {
        m_shouldRaise = true;
        return;
    }
    raise();
    m_raiseTimer = m_queue.after(kRaiseInterval, [this] {
        m_raiseTimer.reset();
        if (std::exchange(m_shouldRaise, false))
            comeForward();
    });
}

QList<QRectF> FloatingView::areas(const char *property) const {
    QList<QRectF> areas;
    const QVariantList values = rootObject()->property(property).value<QVariantList>();
    for (const QVariant &value : values)
        areas.append(value.toRectF());
    return areas;
}

} // namespace velmo
