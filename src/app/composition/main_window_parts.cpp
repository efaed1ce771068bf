#include "app/composition/main_window_parts.h"

#include "app/composition/core_parts.h"
#include "app/composition/setup_parts.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"
#include "store/history_store.h"
#include "store/preference_watch.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>

namespace velmo {

MainWindowParts::MainWindowParts(CoreParts &composition, SetupParts &setup, QQmlEngine &engine,
                                 std::function<bool()> hasTrayHost)
    : MainWindowParts(composition, setup, engine, std::move(hasTrayHost), Region::ofSession()) {}

MainWindowParts::MainWindowParts(CoreParts &composition, SetupParts &setup, QQmlEngine &engine,
                                 std::function<bool()> hasTrayHost, const Region &region)
    : m_calendar(region),
      m_collation(region.locale),
      m_undoOffer(composition.mainQueue()),
      m_view(QCoreApplication::applicationVersion()),
      m_home(homePage(composition, setup.canWatchKeys())),
      m_dictionary(listPage(composition)),
      m_snippets(listPage(composition)),
      m_mode(composition.preferences(), composition.preferenceWatch(), m_undoOffer),
      m_controller(engine,
                   {m_view, m_undoOffer, m_home, m_dictionary, m_snippets, m_mode, setup.accountPage(),
                    setup.settingsPage()},
                   std::move(hasTrayHost)) {
    QObject::connect(&composition.authManager(), &AuthManager::isLoggedInChanged, &m_home,
                     &HomeView::refresh);
    QObject::connect(&composition.syncManager(), &SyncManager::serverTotalsChanged, &m_home,
                     &HomeView::refresh);
}

void MainWindowParts::show() {
    m_home.refresh();
    m_controller.show();
}

HomeView::Collaborators MainWindowParts::homePage(CoreParts &composition, bool canWatchKeys) {
    return {composition.mainQueue(),
            composition.preferences(),
            composition.preferenceWatch(),
            composition.historyStore(),
            m_calendar,
            composition.authManager(),
            [&sync = composition.syncManager()] { return sync.serverTotalWords(); },
            [](const QString &text) { QGuiApplication::clipboard()->setText(text); },
            m_undoOffer,
            canWatchKeys};
}

ListPage MainWindowParts::listPage(CoreParts &composition) {
    return {composition.preferences(), composition.preferenceWatch(), m_collation,
            composition.authManager(), composition.syncManager(),     m_undoOffer};
}

} // namespace velmo
