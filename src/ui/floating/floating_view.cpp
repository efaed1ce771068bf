#include "ui/floating/floating_view.h"

#include "ui/floating/floating_content.h"

#include <QPainterPath>

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

void FloatingView::setContent(const QUrl &component, const QVariantMap &properties) {
    setInitialProperties(properties);
    setSource(component);
    if (!content())
        return;
    connect(content(), &FloatingContent::inputAreasChanged, this, &FloatingView::applyInputAreas);
    connect(content(), &FloatingContent::solidAreasChanged, this, &FloatingView::applySolidAreas);
    connect(content(), &FloatingContent::solidRadiusChanged, this, &FloatingView::applySolidAreas);
    applyInputAreas();
    applyComposition();
}

FloatingContent *FloatingView::content() const {
    return qobject_cast<FloatingContent *>(rootObject());
}

void FloatingView::applyComposition() {
    content()->setComposited(m_desktop.isComposited());
    applySolidAreas();
}

void FloatingView::applyInputAreas() {
    const qreal ratio = devicePixelRatio();
    QList<QRect> region;
    for (const QRectF &area : content()->inputAreas())
        region.append(QRectF(area.topLeft() * ratio, area.size() * ratio).toAlignedRect());
    m_desktop.setInputRegion(winId(), region);
}

void FloatingView::applySolidAreas() {
    QRegion mask;
    if (!m_desktop.isComposited()) {
        for (const QRectF &area : content()->solidAreas())
            mask += roundedRegion(area, content()->solidRadius());
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

} // namespace velmo
