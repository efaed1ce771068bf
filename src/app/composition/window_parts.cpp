#include "app/composition/window_parts.h"

#include "app/composition/core_parts.h"
#include "app/composition/main_window_parts.h"
#include "app/composition/setup_parts.h"
#include "dictation/session/recording_manager.h"
#include "platform/motion_preference.h"
#include "store/history_store.h"
#include "store/preference_watch.h"
#include "ui/controls/interface_setup.h"
#include "ui/models/floating_bar.h"
#include "ui/models/menu_bar_view.h"
#include "ui/overlay/recording_overlay_controller.h"
#include "ui/popover/popover_window.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Panels that start together with Velmo have their tray ready by then (a product decision).
constexpr auto kTrayPatience = 3s;

} // namespace

WindowParts::WindowParts(const Collaborators &collaborators, Requests requests)
    : m_with(collaborators),
      m_requests(std::move(requests)),
      m_isDesktopDark(StatusItem::isDesktopDark()) { // before our own colours take over
    prepareInterface();
    followMotionPreference();
}

WindowParts::~WindowParts() {
    m_with.motion.setChangeHandler({});
}

void WindowParts::followMotionPreference() {
    const auto follow = [this] { setReducedMotion(m_with.engine, m_with.motion.isReduced()); };
    m_with.motion.setChangeHandler(follow);
    follow();
}

// Status item and popover

void WindowParts::showStatusItem(std::function<void()> pressed) {
    MainQueue &queue = m_with.composition.mainQueue();
    m_statusItem = std::make_unique<StatusItem>(queue, m_with.panels, m_isDesktopDark, std::move(pressed));
    m_popover = std::make_unique<PopoverWindow>(
        PopoverWindow::Collaborators{m_with.engine, queue, m_with.floating, m_with.mouse},
        [this] { return makeMenuBarView(); });
    awaitTray();
}

void WindowParts::awaitTray() {
    m_trayTimer =
        m_with.composition.mainQueue().after(kTrayPatience, [this] { showMainWindowWithoutTray(); });
}

/// The window takes the keyboard, so it waits for the end of a dictation and of onboarding.
void WindowParts::showMainWindowWithoutTray() {
    if (StatusItem::hasHost())
        return;
    if (m_with.recordingManager.state() == State::idle && !m_with.setup.isOnboardingShown())
        showMainWindow();
    else
        awaitTray();
}

void WindowParts::updateStatusIcon(State state) {
    m_statusItem->setState(state);
}

void WindowParts::togglePopover() {
    m_popover->toggle(m_statusItem->frame());
}

void WindowParts::closePopover() {
    m_popover->close();
}

std::unique_ptr<MenuBarView> WindowParts::makeMenuBarView() {
    MenuBarView::Ways ways;
    ways.openVelmo = m_requests.openMainWindow;
    ways.quit = m_requests.quit;
    ways.showPermission = [this] {
        closePopover();
        m_with.setup.showPermission(m_with.engine);
    };
    ways.copy = [](const QString &text) { QGuiApplication::clipboard()->setText(text); };
    CoreParts &composition = m_with.composition;
    return std::make_unique<MenuBarView>(
        MenuBarView::Collaborators{composition.mainQueue(), composition.preferences(),
                                   m_with.recordingManager, composition.historyStore(), m_with.hotkeyListener,
                                   m_with.permission},
        std::move(ways), Region::ofSession());
}

// Overlay

void WindowParts::showOverlay() {
    CoreParts &composition = m_with.composition;
    m_with.overlay.show(std::make_unique<FloatingBar>(FloatingBar::Collaborators{
        composition.mainQueue(), composition.preferences(), composition.preferenceWatch(),
        m_with.recordingManager, m_with.levelMeter, m_with.textInserter}));
}

// Windows

void WindowParts::showMainWindow() {
    if (!m_mainWindow)
        m_mainWindow = std::make_unique<MainWindowParts>(m_with.composition, m_with.setup, m_with.engine,
                                                         [] { return StatusItem::hasHost(); });
    m_mainWindow->show();
}

void WindowParts::showOnboarding() {
    m_with.setup.showOnboarding(m_with.engine);
}

} // namespace velmo
