#pragma once

#include "ui/models/language_choice.h"
#include "ui/models/row_model.h"
#include "ui/models/trigger_key_capture.h"

#include <QtQml/qqmlregistration.h>

namespace velmo {

class AccessibilityPermission;
class LoginItem;
class MicrophonePermission;
class MicrophonePresence;
class SystemSettings;

/// A language on offer, and what is chosen of it.
struct LanguageRow {
    Q_GADGET
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(bool selected MEMBER isSelected)
    Q_PROPERTY(bool primary MEMBER isPrimary)

public:
    QString code;
    QString name;
    bool isSelected = false;
    bool isPrimary = false;

    [[nodiscard]] const QString &key() const { return code; }
    bool operator==(const LanguageRow &) const = default;
};

/// What Velmo needs to work.
enum class Permission { Microphone, Accessibility, TriggerKey };

/// Whether Velmo has what it needs.
struct PermissionRow {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(bool granted MEMBER isGranted)
    Q_PROPERTY(bool canOpenSettings MEMBER canOpenSettings)

public:
    Permission permission = Permission::Microphone;
    QString title;
    QString subtitle;
    bool isGranted = false;
    bool canOpenSettings =
        false; ///< Not granted, and the desktop has a page where the person can change that.

    [[nodiscard]] Permission key() const { return permission; }
    bool operator==(const PermissionRow &) const = default;
};

/// The settings page: languages, the reach of the cleanup rules, the trigger key, start at login, what Velmo needs of the
/// desktop, and what it is. Every change is stored when it is made. Main thread.
class SettingsView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QAbstractItemModel *languages READ languages CONSTANT)
    Q_PROPERTY(velmo::LanguageChoice *choice READ choice CONSTANT)
    Q_PROPERTY(bool followsSpokenLanguage READ followsSpokenLanguage WRITE setFollowsSpokenLanguage NOTIFY
                   followsSpokenLanguageChanged)
    Q_PROPERTY(bool showsLiveWords READ showsLiveWords WRITE setShowsLiveWords NOTIFY showsLiveWordsChanged)
    Q_PROPERTY(velmo::TriggerKeyCapture *triggerKey READ triggerKey CONSTANT)
    Q_PROPERTY(bool canWatchKeys READ canWatchKeys NOTIFY permissionsChanged)
    Q_PROPERTY(QString keysNote READ keysNote NOTIFY permissionsChanged)
    Q_PROPERTY(QAbstractItemModel *permissions READ permissions CONSTANT)
    Q_PROPERTY(bool startsAtLogin READ startsAtLogin WRITE setStartsAtLogin NOTIFY startsAtLoginChanged)
    Q_PROPERTY(QString startsAtLoginError READ startsAtLoginError NOTIFY startsAtLoginChanged)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString deviceId READ deviceId NOTIFY deviceIdChanged)

public:
    /// Whom the view works with; all of them outlive it.
    struct Collaborators {
        Preferences &preferences;
        PreferenceWatch &watch;
        HotkeyListener &listener;
        TriggerKeyCapture &triggerKey;
        const AccessibilityPermission &accessibility;
        const MicrophonePermission &microphone;
        MicrophonePresence &microphonePresence;
        SystemSettings &systemSettings;
        LoginItem &loginItem;
        QString version; ///< "1.0.0"
    };

    explicit SettingsView(const Collaborators &collaborators);

    [[nodiscard]] RowModel<LanguageRow> *languages() { return &m_languages; }
    [[nodiscard]] LanguageChoice *choice() { return &m_choice; }
    Q_INVOKABLE void toggleLanguage(const QString &code) { m_choice.toggleLanguage(code); }

    /// Whether only the rules of the language that was spoken apply, not those of all selected ones.
    [[nodiscard]] bool followsSpokenLanguage() const { return m_followsSpokenLanguage; }
    void setFollowsSpokenLanguage(bool follows);

    /// Whether the bar shows words while somebody speaks.
    [[nodiscard]] bool showsLiveWords() const { return m_showsLiveWords; }
    void setShowsLiveWords(bool shows);

    [[nodiscard]] TriggerKeyCapture *triggerKey() { return &m_with.triggerKey; }
    [[nodiscard]] bool canWatchKeys() const;
    /// How to dictate where keys cannot be watched, as styled text; empty where they can.
    [[nodiscard]] QString keysNote() const;

    [[nodiscard]] RowModel<PermissionRow> *permissions() { return &m_permissions; }
    Q_INVOKABLE void openSettings(qsizetype permissionRow);

    [[nodiscard]] bool startsAtLogin() const { return m_startsAtLogin; }
    void setStartsAtLogin(bool starts);
    /// Why it could not be changed; empty when there is nothing to say.
    [[nodiscard]] const QString &startsAtLoginError() const { return m_startsAtLoginError; }

    [[nodiscard]] const QString &version() const { return m_with.version; }
    /// "—" before there is one.
    [[nodiscard]] QString deviceId() const;

    /// The page appears: looks at what the desktop allows at the moment.
    Q_INVOKABLE void appear();
    /// The page goes: a key that is waited for is not any more.
    Q_INVOKABLE void disappear();

Q_SIGNALS:
    void followsSpokenLanguageChanged();
    void showsLiveWordsChanged();
    void permissionsChanged();
    void startsAtLoginChanged();
    void deviceIdChanged();

private:
    void load();
    void loadLanguages();
    void loadPermissions();
    void lookForMicrophone();
    [[nodiscard]] QList<PermissionRow> permissionsNow() const;
    [[nodiscard]] QString triggerKeyStanding() const;

    Collaborators m_with;
    LanguageChoice m_choice;
    RowModel<LanguageRow> m_languages;
    bool m_followsSpokenLanguage = false;
    bool m_showsLiveWords = true;
    bool m_hasMicrophone = false;
    RowModel<PermissionRow> m_permissions;
    bool m_startsAtLogin = false;
    QString m_startsAtLoginError;
    QString m_deviceId;
    Lifetime m_lifetime;
};

} // namespace velmo
