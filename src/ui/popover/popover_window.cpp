#include "ui/popover/popover_window.h"

#include "ui/floating/floating_content.h"
#include "ui/floating/floating_view.h"
#include "ui/floating/visible_frame.h"
#include "ui/models/menu_bar_view.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

// Product decisions, in logical pixels.
constexpr int kGap = 6;          ///< Between the popover and what it belongs to.
constexpr int kScreenMargin = 8; ///< Between the popover and the edge of what is free of the screen.

/// Around the content, for the shadow.
constexpr int kShadowMargin = 24;

/// A press on the status item closes the popover before the item tells of it. What it tells within this time, with the
/// pointer in place, is of the same press.
constexpr auto kOnePress = 1s;
constexpr int kOnePlace = 4;

constexpr auto kFocusInterval = 250ms;

QScreen *screenAt(QPoint position) {
    QScreen *screen = QGuiApplication::screenAt(position);
    return screen ? screen : QGuiApplication::primaryScreen();
}

} // namespace

PopoverWindow::PopoverWindow(const Collaborators &collaborators, MakeContent makeContent)
    : m_with(collaborators), m_makeContent(std::move(makeContent)) {}

PopoverWindow::~PopoverWindow() = default;

void PopoverWindow::toggle(QRect item) {
    if (isShown())
        close();
    else if (!hasThisClickClosed())
        show(item.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : item);
}

void PopoverWindow::show(QRect item) {
    m_frame = placement(item, visibleFrame(*screenAt(item.center()), m_with.desktop));
    m_view = std::make_unique<FloatingView>(m_with.engine, m_with.queue, m_with.desktop,
                                            FloatingView::Keyboard::CanBorrow);
    MenuBarView *content = m_makeContent().release();
    content->setParent(m_view.get()); // goes after the items that show it
    m_view->setGeometry(m_frame.marginsAdded({kShadowMargin, kShadowMargin, kShadowMargin, kShadowMargin}));
    m_view->setContent(QUrl(u"qrc:/qt-project.org/imports/Velmo/Popover/PopoverContent.qml"_s),
                       {{u"view"_s, QVariant::fromValue(content)}, {u"margin"_s, kShadowMargin}});
    connect(m_view->content(), &FloatingContent::closeRequested, this, &PopoverWindow::close);
    connect(m_view.get(), &QWindow::activeChanged, this, &PopoverWindow::activeChanged);
    // What is dictated belongs to the application that had the keyboard.
    m_content = content;
    connect(content, &MenuBarView::statusChanged, this, [this] {
        if (isDictating())
            m_keyboard.reset();
    });
    m_view->show();
    borrowKeyboard();
    m_clickWatch = m_with.mouse.watch([this](QPoint) { clicked(); });
}

void PopoverWindow::close() {
    if (!isShown())
        return;
    m_closedAt = 0ns;
    m_clickWatch.reset();
    m_focusTimer.reset();
    m_keyboard.reset(); // before the window goes, or the keyboard would be nobody's
    m_view->hide();
    m_view->disconnect(this);
    m_view.release()->deleteLater(); // it may be the one that asks
}

bool PopoverWindow::isDictating() const {
    return m_content->isRecording() || m_content->isTranscribing();
}

/// Again by a click within, after a dictation.
void PopoverWindow::borrowKeyboard() {
    if (!m_keyboard && !isDictating())
        m_keyboard = m_with.desktop.borrowKeyboard(m_view->winId());
}

void PopoverWindow::clicked() {
    if (!isShown())
        return;
    if (m_frame.contains(QCursor::pos())) {
        borrowKeyboard();
        return;
    }
    close();
    m_closingClick = QCursor::pos();
    m_closedAt = m_with.queue.uptime();
}

/// While a key is grabbed, as the trigger key is while it is down, the window is told that it has lost the keyboard, and
/// would hear no more if it did.
void PopoverWindow::activeChanged() {
    m_focusTimer.reset();
    if (!m_keyboard || m_view->isActive())
        return;
    if (m_keyboard->isActive())
        m_focusTimer = m_with.queue.after(kFocusInterval, [this] { activeChanged(); });
    else
        close();
}

bool PopoverWindow::hasThisClickClosed() const {
    return m_closedAt != 0ns && m_with.queue.uptime() - m_closedAt < kOnePress &&
           (QCursor::pos() - m_closingClick).manhattanLength() <= kOnePlace;
}

QRect PopoverWindow::placement(QRect item, QRect visibleFrame) {
    const QRect free =
        visibleFrame.marginsRemoved({kScreenMargin, kScreenMargin, kScreenMargin, kScreenMargin});
    const bool isBelow = item.center().y() < visibleFrame.center().y();
    const int x = item.x() + (item.width() - contentSize.width()) / 2;
    const int y = isBelow ? item.y() + item.height() + kGap : item.y() - kGap - contentSize.height();
    const int right = std::max(free.x(), free.x() + free.width() - contentSize.width());
    const int lowest = std::max(free.y(), free.y() + free.height() - contentSize.height());
    return {QPoint(std::clamp(x, free.x(), right), std::clamp(y, free.y(), lowest)), contentSize};
}

} // namespace velmo
