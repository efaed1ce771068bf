#include "app/desktop/app_delegate.h"

#include "app/desktop/user_interface.h"
#include "base/log.h"
#include "dictation/session/dictation_controls.h"
#include "dictation/session/recording_manager.h"
#include "platform/accessibility_permission.h"
#include "platform/system_settings.h"
#include "platform/workspace.h"
#include "service/wire/session_interfaces.h"
#include "store/preference_keys.h"
#include "store/preferences.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr QLatin1StringView kFnUsage{"AppleFnUsageType"};
constexpr qint64 kDoesNothing = 0;

/// A synchronisation this young is good enough (a product decision).
constexpr auto kFreshSync = 30s;

} // namespace

AppDelegate::AppDelegate(const Collaborators &collaborators)
    : m_with(collaborators),
      m_trayFallback(collaborators.queue, collaborators.recordingManager, collaborators.interface) {}

void AppDelegate::applicationDidFinishLaunching() {
    m_with.interface.showStatusItem(m_lifetime.guard([this] { togglePopover(); }));
    m_trayFallback.awaitTray();
    takeTriggerKey();
    m_with.controls.startListening();
    followState();
    m_with.interface.showOverlay();
    showOnboardingWhereNeeded();
    m_with.account.whenRestored(m_lifetime.guard([this] { syncOnLaunch(); }));
    m_with.workspace.setActivationHandler([this](bool isThisApplication) {
        if (isThisApplication)
            appDidBecomeActive();
    });
    log(LogTag::VelmoMac, u"Ready — hold Fn (push-to-talk) or double-tap Fn (hands-free)"_s);
}

void AppDelegate::applicationWillTerminate() {
    m_with.controls.stopListening();
    m_with.workspace.setActivationHandler({});
    giveTriggerKeyBack();
}

void AppDelegate::togglePopover() {
    m_with.interface.togglePopover();
}

void AppDelegate::openMainWindow() {
    m_with.interface.closePopover();
    m_with.interface.showMainWindow();
}

void AppDelegate::showPermission() {
    constexpr auto kKeys = SystemSettings::Page::Keyboard;
    m_with.interface.closePopover();
    if (!m_with.permission.isTrusted() && m_with.systemSettings.canOpen(kKeys))
        m_with.systemSettings.open(kKeys);
    else
        m_with.interface.showOnboarding();
}

bool AppDelegate::applicationShouldHandleReopen() {
    m_with.interface.showMainWindow();
    return true;
}

void AppDelegate::updateStatusIcon(State state) {
    m_with.interface.updateStatusIcon(state);
}

/// Nobody can grant a session what it does not have (Wayland), so that it is missing is said once, not at each launch.
void AppDelegate::showOnboardingWhereNeeded() {
    const auto &key = m_with.permission.isTrusted() ? keys::onboardingComplete : keys::keylessSetupComplete;
    if (!m_with.preferences.boolean(key).value_or(false))
        m_with.interface.showOnboarding();
}

void AppDelegate::appDidBecomeActive() {
    m_with.account.whenRestored(m_lifetime.guard([this] { syncOnActivation(); }));
}

void AppDelegate::syncOnActivation() {
    if (!m_with.account.isLoggedIn())
        return;
    const auto last = m_with.synchronisation.lastSyncDate();
    if (last && m_with.queue.now() - *last < kFreshSync)
        return;
    log(LogTag::VelmoMacSync, u"Auto-syncing on app activation..."_s);
    m_with.synchronisation.syncAll();
}

/// A keyring takes its time to tell about the session, so this may come after the ready line.
void AppDelegate::syncOnLaunch() {
    if (!m_with.account.isLoggedIn())
        return;
    log(LogTag::VelmoMacSync, u"Auto-syncing on launch..."_s);
    m_with.synchronisation.syncAll();
}

void AppDelegate::takeTriggerKey() {
    const qint64 previous = m_with.keyboardPreferences.integer(kFnUsage).value_or(kDoesNothing);
    m_with.preferences.set(keys::previousFnUsage, previous);
    m_with.keyboardPreferences.set(kFnUsage, kDoesNothing);
    log(LogTag::VelmoMac, u"Emoji picker disabled (was: %1, now: 0)"_s.arg(previous));
}

void AppDelegate::giveTriggerKeyBack() {
    const qint64 previous = m_with.preferences.integer(keys::previousFnUsage).value_or(kDoesNothing);
    m_with.keyboardPreferences.set(kFnUsage, previous);
    log(LogTag::VelmoMac, u"Emoji picker restored (value: %1)"_s.arg(previous));
}

void AppDelegate::followState() {
    m_with.recordingManager.onStateChange =
        onMain(m_with.queue, m_lifetime, [this](State state) { updateStatusIcon(state); });
}

} // namespace velmo
