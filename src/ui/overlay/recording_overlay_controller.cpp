#include "ui/overlay/recording_overlay_controller.h"

#include "ui/floating/floating_view.h"
#include "ui/floating/visible_frame.h"
#include "ui/models/floating_bar.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

// Product decisions.
constexpr auto kResizeTime = 350ms;
constexpr auto kMoveTime = 300ms;

QScreen *screenUnderMouse() {
    const QPoint mouse = QCursor::pos();
    for (QScreen *screen : QGuiApplication::screens()) {
        if (screen->geometry().contains(mouse))
            return screen;
    }
    return QGuiApplication::primaryScreen();
}

} // namespace

RecordingOverlayController::RecordingOverlayController(const Collaborators &collaborators)
    : m_with(collaborators) {
    m_move.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&m_move, &QVariantAnimation::valueChanged, this, [this](const QVariant &position) {
        if (m_move.state() == QAbstractAnimation::Running) // it also changes while another move is set up
            m_overlayPanel->setPosition(position.toPoint());
    });
}

RecordingOverlayController::~RecordingOverlayController() = default;

void RecordingOverlayController::show(std::unique_ptr<FloatingBar> bar) {
    if (m_overlayPanel)
        return;
    m_overlayPanel = std::make_unique<FloatingView>(m_with.engine, m_with.queue, m_with.desktop,
                                                    FloatingView::Keyboard::Never);
    m_currentScreen = screenUnderMouse();
    m_overlayPanel->setGeometry(windowFrame());
    FloatingBar *content = bar.release();
    content->setParent(m_overlayPanel.get()); // goes after the items that show it
    m_overlayPanel->setContent(QUrl(u"qrc:/qt-project.org/imports/Velmo/Overlay/FloatingBarView.qml"_s),
                               {{u"bar"_s, QVariant::fromValue(content)},
                                {u"idleSize"_s, QSizeF(idleSize)},
                                {u"activeSize"_s, QSizeF(activeSize)},
                                {u"bottomMargin"_s, bottomMargin}});
    m_overlayPanel->show();
    followScreens();
    m_mouseMonitor = m_with.mouse.watch([this](QPoint) { mouseClicked(); });
}

void RecordingOverlayController::update(State) {
    if (!m_overlayPanel)
        return;
    m_currentScreen = screenUnderMouse();
    moveIn(kResizeTime);
}

QRect RecordingOverlayController::placement(QRect visibleFrame) {
    const int left = visibleFrame.x() + (visibleFrame.width() - windowSize.width()) / 2;
    const int bottom = visibleFrame.y() + visibleFrame.height();
    return {QPoint(left, bottom - windowSize.height()), windowSize};
}

QRect RecordingOverlayController::windowFrame() const {
    if (!m_currentScreen)
        return {QPoint(0, 0), windowSize};
    return placement(visibleFrame(*m_currentScreen, m_with.desktop));
}

void RecordingOverlayController::followScreens() {
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen *screen) {
        followScreen(screen);
        screensChanged();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &RecordingOverlayController::screensChanged);
    connect(m_overlayPanel.get(), &FloatingView::panelsChanged, this,
            &RecordingOverlayController::screensChanged);
    for (QScreen *screen : QGuiApplication::screens())
        followScreen(screen);
}

void RecordingOverlayController::followScreen(QScreen *screen) {
    connect(screen, &QScreen::geometryChanged, this, &RecordingOverlayController::screensChanged);
    connect(screen, &QScreen::availableGeometryChanged, this, &RecordingOverlayController::screensChanged);
}

void RecordingOverlayController::screensChanged() {
    m_move.stop();
    m_currentScreen = screenUnderMouse();
    m_overlayPanel->setGeometry(windowFrame());
}

void RecordingOverlayController::mouseClicked() {
    QScreen *screen = screenUnderMouse();
    if (screen == m_currentScreen || !screen)
        return;
    m_currentScreen = screen;
    moveIn(kMoveTime);
}

void RecordingOverlayController::moveIn(std::chrono::milliseconds duration) {
    const QPoint target = windowFrame().topLeft();
    if (m_move.state() == QAbstractAnimation::Running && m_move.endValue().toPoint() == target)
        return;
    m_move.stop();
    if (m_overlayPanel->position() == target)
        return;
    m_move.setDuration(static_cast<int>(duration.count()));
    m_move.setStartValue(m_overlayPanel->position());
    m_move.setEndValue(target);
    m_move.start();
}

} // namespace velmo
