#include "app/composition/setup_parts.h"

#include "app/composition/core_parts.h"
#include "platform/accessibility_permission.h"
#include "platform/system_settings.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"
#include "store/preference_watch.h"
#include "ui/models/account_view.h"
#include "ui/models/onboarding_view.h"
#include "ui/models/settings_view.h"
#include "ui/onboarding/onboarding_window_controller.h"

#include <QCoreApplication>
#include <QQuickWindow>

namespace velmo {

SetupParts::SetupParts(CoreParts &composition, const Desktop &desktop)
    : m_composition(composition), m_desktop(desktop) {}

SetupParts::~SetupParts() = default;

TriggerKeyCapture &SetupParts::triggerKey() {
    if (!m_triggerKey)
        m_triggerKey = std::make_unique<TriggerKeyCapture>(
            TriggerKeyCapture::Collaborators{m_composition.preferences(), m_composition.preferenceWatch(),
                                             m_desktop.listener, m_desktop.keys});
    return *m_triggerKey;
}

QObject &SetupParts::accountPage() {
    if (!m_accountPage) {
        m_calendar = std::make_unique<Calendar>(Region::ofSession());
        m_accountPage = std::make_unique<AccountView>(AccountView::Collaborators{
            m_composition.mainQueue(), m_composition.authManager(), m_composition.syncManager(), *m_calendar,
            m_composition.isServiceOnThisMachine()});
    }
    return *m_accountPage;
}

QObject &SetupParts::settingsPage() {
    if (!m_settingsPage)
        m_settingsPage = std::make_unique<SettingsView>(SettingsView::Collaborators{
            m_composition.preferences(), m_composition.preferenceWatch(), m_desktop.listener, triggerKey(),
            m_desktop.accessibility, m_desktop.microphone, m_desktop.microphonePresence,
            m_desktop.systemSettings, m_desktop.loginItem, QStringLiteral(VELMO_VERSION)});
    return *m_settingsPage;
}

void SetupParts::showOnboarding(QQmlEngine &engine) {
    if (!m_onboardingWindow) {
        m_onboarding = std::make_unique<OnboardingView>(OnboardingView::Collaborators{
            m_composition.mainQueue(), m_desktop.listener, triggerKey(), m_desktop.accessibility,
            m_desktop.microphone, m_desktop.microphonePresence, m_desktop.systemSettings});
        m_onboardingWindow =
            std::make_unique<OnboardingWindowController>(engine, m_composition.preferences(), *m_onboarding);
    }
    m_onboardingWindow->show();
}

bool SetupParts::isOnboardingShown() const {
    return m_onboardingWindow && m_onboardingWindow->window() && m_onboardingWindow->window()->isVisible();
}

bool SetupParts::canWatchKeys() const {
    return m_desktop.accessibility.isTrusted();
}

void SetupParts::showPermission(QQmlEngine &engine) {
    constexpr auto kKeys = SystemSettings::Page::Keyboard;
    if (!canWatchKeys() && m_desktop.systemSettings.canOpen(kKeys))
        m_desktop.systemSettings.open(kKeys);
    else
        showOnboarding(engine);
}

} // namespace velmo
