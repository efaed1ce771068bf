#include "app/desktop/status_item.h"

#include "platform/desktop_panels.h"
#include "ui/controls/symbol_drawing.h"

#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QScreen>
#include <algorithm>
#include <vector>

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Of panels, small ones to tall ones, and both on screens of twice the pixels.
constexpr int kSides[] = {16, 22, 24, 32, 44, 48};

constexpr QRgb kOnLight = qRgb(0x12, 0x12, 0x12);
constexpr QRgb kOnDark = qRgb(0xff, 0xff, 0xff);

/// A tray takes a moment to let an item in, and tells nobody when it has: until then the item is in a corner, where the
/// desktop may have any colour.
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

QIcon iconOf(QStringView symbol, QRgb color) {
    QIcon icon;
    for (const int side : kSides)
        icon.addPixmap(symbolPixmap(symbol, SymbolWeight::Medium, color, side));
    return icon;
}

bool isDark(const QColor &color) {
    return color.lightnessF() < 0.5F;
}

QImage seenOnScreen(QRect area) {
    QScreen *screen = QGuiApplication::screenAt(area.center());
    if (!screen)
        return {};
    const QPoint onScreen = area.topLeft() - screen->geometry().topLeft();
    return screen->grabWindow(0, onScreen.x(), onScreen.y(), area.width(), area.height()).toImage();
}

/// That of the middle lightness along the middle line: letters and symbols take less room than what they stand on.
QColor groundOf(const QImage &image) {
    std::vector<QColor> colors;
    for (int x = 0; x < image.width(); ++x)
        colors.push_back(image.pixelColor(x, image.height() / 2));
    if (colors.empty())
        return {};
    const auto middle = colors.begin() + static_cast<std::ptrdiff_t>(colors.size() / 2);
    std::nth_element(colors.begin(), middle, colors.end(), [](const QColor &left, const QColor &right) {
        return left.lightnessF() < right.lightnessF();
    });
    return *middle;
}

} // namespace

StatusItem::StatusItem(MainQueue &queue, const DesktopPanels &panels, bool isDesktopDark,
                       std::function<void()> pressed)
    : m_queue(queue), m_panels(panels), m_isPanelDark(isDesktopDark) {
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [pressed = std::move(pressed)] { pressed(); });
    draw();
    m_icon.show();
    followPanel(kLooks);
}

bool StatusItem::isDesktopDark() {
    // The panel of this desktop is dark whatever the colours of its windows.
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(u"GNOME") ||
           isDark(QGuiApplication::palette().color(QPalette::Window));
}

void StatusItem::setState(State state) {
    m_state = state;
    lookAtPanel();
    draw();
}

void StatusItem::followPanel(int looksLeft) {
    lookAtPanel();
    if (looksLeft > 0)
        m_lookTimer = m_queue.after(kLookInterval, [this, looksLeft] { followPanel(looksLeft - 1); });
}

void StatusItem::lookAtPanel() {
    const QColor color = panelColor();
    if (!color.isValid() || isDark(color) == m_isPanelDark)
        return;
    m_isPanelDark = !m_isPanelDark;
    m_icons.clear();
    draw();
}

/// Where the tray does not tell where the item is, it is taken to be in the largest panel.
QColor StatusItem::panelColor() const {
    if (const QRect own = frame(); !own.isEmpty())
        return groundOf(seenOnScreen(QRect(own.topLeft(), QSize(own.width(), 1)))); // above the symbol
    QRect largest;
    for (const QRect &panel : m_panels.frames()) {
        if (panel.width() * panel.height() > largest.width() * largest.height())
            largest = panel;
    }
    if (largest.isEmpty())
        return {};
    const qreal ratio = qGuiApp->devicePixelRatio();
    return groundOf(seenOnScreen(QRect(largest.topLeft() / ratio, largest.size() / ratio)));
}

void StatusItem::draw() {
    const Image image = imageFor(m_state);
    QIcon &icon = m_icons[m_state];
    if (icon.isNull())
        icon = iconOf(image.symbol, m_isPanelDark ? kOnDark : kOnLight);
    m_icon.setIcon(icon);
    m_icon.setToolTip(image.description);
}

} // namespace velmo
