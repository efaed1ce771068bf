#include "ui/controls/progress_arc.h"

#include <QPainter>

namespace velmo {

namespace {

// Product decisions, the same for every size of ring.
constexpr qreal kStroke = 2;
constexpr qreal kTrackOpacity = 0.22;
constexpr qreal kStrongPart = 0.28;

/// QPainter counts sixteenths of a degree, against the clock, from three o'clock.
constexpr int kWholeTurn = 360 * 16;
constexpr int kUp = 90 * 16;

} // namespace

ProgressArc::ProgressArc(QQuickItem *parent) : QQuickPaintedItem(parent) {
    connect(this, &ProgressArc::drawingChanged, this, [this] { update(); });
}

void ProgressArc::paint(QPainter *painter) {
    const QRectF ring = boundingRect().marginsRemoved(QMarginsF(1, 1, 1, 1) * (kStroke / 2));
    QColor track = m_color;
    track.setAlphaF(static_cast<float>(m_color.alphaF() * kTrackOpacity));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(track, kStroke));
    painter->drawEllipse(ring);
    painter->setPen(QPen(m_color, kStroke, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(ring, kUp - qRound(m_turn * kWholeTurn), -qRound(kStrongPart * kWholeTurn));
}

} // namespace velmo
