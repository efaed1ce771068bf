#include "app/status_item.h"

#include "ui/controls/symbol_drawing.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Of panels, small ones to tall ones, and both on screens of twice the pixels.
constexpr int kSides[] = {16, 22, 24, 32, 44, 48};

constexpr QRgb kOnLight = qRgb(0x12, 0x12, 0x12);
constexpr QRgb kOnDark = qRgb(0xff, 0xff, 0xff);

/// A tray takes a moment to let an item in, and tells nobody when it has.
constexpr auto kLookInterval = 250ms;
constexpr int kLooks = 12;

struct Image {
    QStringView symbol;
    QString description;
};

Image imageFor(State state) {
    switch (state) {
    case State::idle:
        break;
    case State::recording:
        return {u"waveform.circle.fill", QSystemTrayIcon::tr("Recording")};
    case State::transcribing:
        return {u"ellipsis.circle", QSystemTrayIcon::tr("Transcribing")};
    }
    return {u"waveform", QSystemTrayIcon::tr("Velmo")};
}

bool isDark(const QColor &color) {
    return color.lightnessF() < 0.5F;
}

QColor colorOnScreen(QPoint position) {
    QScreen *screen = QGuiApplication::screenAt(position);
    if (!screen)
        return {};
    const QPoint onScreen = position - screen->geometry().topLeft();
    return QColor(screen->grabWindow(0, onScreen.x(), onScreen.y(), 1, 1).toImage().pixel(0, 0));
}

} // namespace

StatusItem::StatusItem(MainQueue &queue, bool isDesktopDark, std::function<void()> pressed)
    : m_queue(queue), m_isPanelDark(isDesktopDark) {
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [pressed = std::move(pressed)] { pressed(); });
    draw();
    m_icon.show();
    look(kLooks);
}

bool StatusItem::isDesktopDark() {
    // The panel of this desktop is dark whatever the colours of its windows.
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(u"GNOME") ||
           isDark(QGuiApplication::palette().color(QPalette::Window));
}

void StatusItem::setState(State state) {
    m_state = state;
    look(0);
    draw();
}

/// The symbols leave the corners of their square free, so there the panel is seen.
void StatusItem::look(int triesLeft) {
    if (!frame().isEmpty()) {
        m_isPanelDark = isDark(colorOnScreen(frame().topLeft()));
        draw();
    } else if (triesLeft > 0) {
        m_lookTimer = m_queue.after(kLookInterval, [this, triesLeft] { look(triesLeft - 1); });
    }
}

void StatusItem::draw() {
    const Image image = imageFor(m_state);
    QIcon icon;
    for (const int side : kSides)
        icon.addPixmap(
            symbolPixmap(image.symbol, SymbolWeight::Medium, m_isPanelDark ? kOnDark : kOnLight, side));
    m_icon.setIcon(icon);
    m_icon.setToolTip(image.description);
}

} // namespace velmo
