#include "ui/models/settings_view.h"

#include "dictation/gestures/hotkey_listener.h"
#include "platform/accessibility_permission.h"
#include "platform/login_item.h"
#include "platform/microphone_permission.h"
#include "platform/microphone_presence.h"
#include "platform/system_settings.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "store/rule_scope.h"
#include "ui/models/platform_texts.h"

using namespace Qt::StringLiterals;

namespace velmo {

SettingsView::SettingsView(const Collaborators &collaborators)
    : m_with(collaborators),
      m_choice(m_with.preferences, m_with.watch),
      m_hasMicrophone(m_with.microphone.status() == MicrophonePermission::Status::Granted) {
    connect(&m_choice, &LanguageChoice::primaryLanguageChanged, this, &SettingsView::loadLanguages);
    connect(&m_choice, &LanguageChoice::selectedLanguagesChanged, this, &SettingsView::loadLanguages);
    connect(&m_with.listener, &HotkeyListener::isUsingFnHotkeyChanged, this, &SettingsView::loadPermissions);
    connect(&m_with.triggerKey, &TriggerKeyCapture::keyNameChanged, this, &SettingsView::loadPermissions);
    for (const QLatin1StringView key : {keys::ruleScope, keys::deviceId, keys::liveWords})
        m_with.watch.follow(key, this, [this] { load(); });
    load();
    loadLanguages();
    loadPermissions();
}

// Languages

void SettingsView::loadLanguages() {
    QList<LanguageRow> rows;
    for (const Language &language : LanguageChoice::languages())
        rows.append({language.code, language.name, m_choice.selectedLanguages().contains(language.code),
                     language.code == m_choice.primaryLanguage()});
    m_languages.setRows(rows);
}

void SettingsView::setFollowsSpokenLanguage(bool follows) {
    setRuleScope(m_with.preferences, follows ? RuleScope::Spoken : RuleScope::Selected);
    load();
}

void SettingsView::setShowsLiveWords(bool shows) {
    m_with.preferences.set(keys::liveWords, shows);
    load();
}

/// What is stored and shown as it stands.
void SettingsView::load() {
    const bool follows = ruleScope(m_with.preferences) == RuleScope::Spoken;
    if (std::exchange(m_followsSpokenLanguage, follows) != follows)
        Q_EMIT followsSpokenLanguageChanged();
    const bool shows = m_with.preferences.boolean(keys::liveWords).value_or(true);
    if (std::exchange(m_showsLiveWords, shows) != shows)
        Q_EMIT showsLiveWordsChanged();
    const QString id = m_with.preferences.string(keys::deviceId).value_or(QString());
    if (std::exchange(m_deviceId, id) != id)
        Q_EMIT deviceIdChanged();
}

// What Velmo needs of the desktop

bool SettingsView::canWatchKeys() const {
    return m_with.accessibility.isTrusted();
}

QString SettingsView::keysNote() const {
    return canWatchKeys() ? QString() : platform_texts::styledToggleCommandNote();
}

void SettingsView::openSettings(qsizetype permissionRow) {
    const bool isMicrophone = m_permissions.rows().value(permissionRow).permission == Permission::Microphone;
    m_with.systemSettings.open(isMicrophone ? SystemSettings::Page::Sound : SystemSettings::Page::Keyboard);
}

QList<PermissionRow> SettingsView::permissionsNow() const {
    const QString &key = m_with.triggerKey.keyName();
    const bool mayUseKeys = canWatchKeys();
    const bool canFixKeys = !mayUseKeys && m_with.systemSettings.canOpen(SystemSettings::Page::Keyboard);
    const bool canFixSound = !m_hasMicrophone && m_with.systemSettings.canOpen(SystemSettings::Page::Sound);
    return {
        {Permission::Microphone, tr("Microphone"), tr("Required for voice recording"), m_hasMicrophone,
         canFixSound},
        {Permission::Accessibility, tr("Accessibility"),
         tr("Required for %1 key and text insertion").arg(key), mayUseKeys, canFixKeys},
        {Permission::TriggerKey, tr("%1 Key").arg(key), triggerKeyStanding(),
         m_with.listener.isUsingFnHotkey(), canFixKeys},
    };
}

QString SettingsView::triggerKeyStanding() const {
    const QString &key = m_with.triggerKey.keyName();
    if (m_with.listener.isUsingFnHotkey())
        return tr("Active — %1 key interception enabled").arg(key);
    return canWatchKeys() ? platform_texts::missingTriggerKey(key) : tr("Requires Accessibility permission");
}

void SettingsView::loadPermissions() {
    m_permissions.setRows(permissionsNow());
    Q_EMIT permissionsChanged();
}

void SettingsView::lookForMicrophone() {
    m_with.microphonePresence.check(m_lifetime.guard([this](bool present) {
        m_hasMicrophone = present && m_with.microphone.status() == MicrophonePermission::Status::Granted;
        loadPermissions();
    }));
}

// Start at login, about

void SettingsView::setStartsAtLogin(bool starts) {
    const auto outcome = m_with.loginItem.setEnabled(starts);
    m_startsAtLoginError = outcome ? QString() : outcome.error();
    m_startsAtLogin = m_with.loginItem.isEnabled();
    Q_EMIT startsAtLoginChanged();
}

QString SettingsView::deviceId() const {
    return m_deviceId.isEmpty() ? u"—"_s : m_deviceId;
}

void SettingsView::appear() {
    m_startsAtLogin = m_with.loginItem.isEnabled();
    m_startsAtLoginError = QString();
    Q_EMIT startsAtLoginChanged();
    loadPermissions();
    lookForMicrophone();
}

void SettingsView::disappear() {
    m_with.triggerKey.cancel();
}

} // namespace velmo
