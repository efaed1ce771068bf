#include "app/composition/window_parts.h"

#include "app/composition/core_parts.h"
#include "base/calendar.h"
#include "base/collation.h"
#include "dictation/session/recording_manager.h"
#include "platform/linux/x11/x11_input.h"
#include "service/account/auth_manager.h"
#include "service/status/service_watch.h"
#include "service/sync/sync_manager.h"
#include "store/history_store.h"
#include "store/languages.h"
#include "store/preference_watch.h"
#include "ui/controls/interface_setup.h"
#include "ui/models/account_view.h"
#include "ui/models/dictionary_view.h"
#include "ui/models/floating_bar.h"
#include "ui/models/home_view.h"
#include "ui/models/main_window_view.h"
#include "ui/models/menu_bar_view.h"
#include "ui/models/mode_view.h"
#include "ui/models/onboarding_view.h"
#include "ui/models/settings_view.h"
#include "ui/models/snippets_view.h"
#include "ui/models/speech_view.h"
#include "ui/models/undo_offer.h"
#include "ui/onboarding/onboarding_window_controller.h"
#include "ui/overlay/recording_overlay_controller.h"
#include "ui/window/main_window_controller.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>

namespace velmo {

namespace {

void copyToClipboard(const QString &text) {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

/// The main window over its pages' states, and those over the stores.
struct WindowParts::MainWindow {
    MainWindow(const Collaborators &with, const TriggerKeyName &triggerKeyName, TriggerKeyCapture &triggerKey,
               LoginItem &loginItem)
        : undoOffer(with.core.mainQueue()),
          home({with.core.mainQueue(), with.core.preferences(), with.core.preferenceWatch(), triggerKeyName,
                with.core.historyStore(), calendar, with.core.authManager(),
                [&sync = with.core.syncManager()] { return sync.serverTotalWords(); }, copyToClipboard,
                undoOffer, with.display.permission->isTrusted()}),
          listPage{with.core.preferences(), with.core.preferenceWatch(), collation,
                   with.core.authManager(), with.core.syncManager(),     undoOffer},
          mode(with.core.preferences(), with.core.preferenceWatch(), with.core.serviceWatch(), undoOffer),
          account({with.core.mainQueue(), with.core.authManager(), with.core.syncManager(), calendar,
                   with.core.isServiceOnThisMachine()}),
          settings({with.core.preferences(), with.core.preferenceWatch(), with.hotkeyListener, triggerKey,
                    *with.display.permission, with.microphonePermission, with.microphonePresence,
                    with.systemSettings, loginItem, QCoreApplication::applicationVersion()}),
          trial(with.core.mainQueue(), with.recordingManager),
          speech({with.core.mainQueue(), with.core.preferences(), with.core.preferenceWatch(),
                  with.core.serviceStatus(), with.core.serviceWatch(), trial, calendar}),
          window(with.engine,
                 {view, undoOffer, &home, &dictionary, &snippets, &mode, &account, &settings, &speech},
                 StatusItem::hasHost) {
        const auto refresh = [this] { home.refresh(); };
        QObject::connect(&with.core.authManager(), &AuthManager::isLoggedInChanged, &home, refresh);
        QObject::connect(&with.core.syncManager(), &SyncManager::serverTotalsChanged, &home, refresh);
    }

    const Region region = Region::ofSession();
    Calendar calendar{region};
    Collation collation{region.locale};
    UndoOffer undoOffer;
    MainWindowView view{QCoreApplication::applicationVersion()};
    HomeView home;
    ListPage listPage;
    DictionaryView dictionary{listPage};
    SnippetsView snippets{listPage};
    ModeView mode;
    AccountView account;
    SettingsView settings;
    SpeechTrial trial;
    SpeechView speech;
    MainWindowController window;
};

struct WindowParts::Onboarding {
    Onboarding(const Collaborators &with, TriggerKeyCapture &triggerKey)
        : trial(with.core.mainQueue(), with.recordingManager),
          view({with.core.mainQueue(), with.hotkeyListener, triggerKey, *with.display.permission,
                with.microphonePermission, with.microphonePresence, with.systemSettings,
                with.core.preferences(), with.core.preferenceWatch(), with.core.serviceWatch(), trial}),
          window(with.engine, with.core.preferences(), view) {}

    SpeechTrial trial;
    OnboardingView view;
    OnboardingWindowController window;
};

WindowParts::WindowParts(const Collaborators &collaborators, Actions actions)
    : m_with(collaborators),
      m_actions(std::move(actions)),
      m_isDesktopDark(StatusItem::isDesktopDark()), // before our own colours take over
      m_triggerKeyName(m_with.core.preferences(), m_with.core.preferenceWatch(), *m_with.display.keys),
      m_triggerKey(
          {m_with.core.preferences(), m_triggerKeyName, m_with.hotkeyListener, *m_with.display.keys}),
      m_loginItem(autostartFolder(), QCoreApplication::applicationFilePath()),
      m_popover({m_with.engine, m_with.core.mainQueue(), *m_with.display.floating, *m_with.display.mouse},
                [this] { return makeMenuBarView(); }) {
    choosePrimaryLanguage(m_with.core.preferences(), QLocale::system().uiLanguages());
    prepareInterface();
    followMotionPreference();
}

WindowParts::~WindowParts() {
    m_with.display.motion->setChangeHandler({});
}

void WindowParts::followMotionPreference() {
    MotionPreference &motion = *m_with.display.motion;
    const auto follow = [this, &motion] { setReducedMotion(m_with.engine, motion.isReduced()); };
    motion.setChangeHandler(follow);
    follow();
}

void WindowParts::showStatusItem(std::function<void()> pressed) {
    m_statusItem = std::make_unique<StatusItem>(m_with.core.mainQueue(), *m_with.display.panels,
                                                m_isDesktopDark, std::move(pressed));
}

std::unique_ptr<MenuBarView> WindowParts::makeMenuBarView() {
    return std::make_unique<MenuBarView>(
        MenuBarView::Collaborators{m_with.core.mainQueue(), m_triggerKeyName, m_with.recordingManager,
                                   m_with.core.historyStore(), m_with.hotkeyListener,
                                   *m_with.display.permission},
        MenuBarView::Actions{m_actions.openMainWindow, m_actions.quit, m_actions.showPermission,
                             copyToClipboard},
        Region::ofSession());
}

void WindowParts::showOverlay() {
    m_with.overlay.show(std::make_unique<FloatingBar>(
        FloatingBar::Collaborators{m_with.core.mainQueue(), m_triggerKeyName, m_with.recordingManager,
                                   m_with.levelMeter, m_with.textInserter}));
}

void WindowParts::showMainWindow() {
    if (!m_mainWindow)
        m_mainWindow = std::make_unique<MainWindow>(m_with, m_triggerKeyName, m_triggerKey, m_loginItem);
    m_mainWindow->home.refresh();
    m_mainWindow->window.show();
}

void WindowParts::showOnboarding() {
    if (!m_onboarding)
        m_onboarding = std::make_unique<Onboarding>(m_with, m_triggerKey);
    m_onboarding->window.show();
}

bool WindowParts::isOnboardingShown() const {
    const QQuickWindow *window = m_onboarding ? m_onboarding->window.window() : nullptr;
    return window && window->isVisible();
}

} // namespace velmo
