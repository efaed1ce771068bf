import QtQuick
import Velmo.Controls
import Velmo.Models

/// The trigger key, chosen by pressing another, or how to dictate without one, and whether Velmo waits in the tray from
/// the start.
SettingsSection {
    id: section

    required property SettingsView settings
    readonly property TriggerKeyCapture _key: settings.triggerKey

    symbolName: "keyboard"
    title: qsTr("Dictation")

    SettingsRow {
        width: parent.width
        isFirst: true
        title: qsTr("Trigger Key")
        subtitle: !section.settings.canWatchKeys ? ""
                : section._key.refusal.length > 0 ? section._key.refusal : section._key.instruction
        subtitleColor: section._key.refusal.length > 0 ? Theme.orangeText : Theme.secondary

        KeyCap {
            id: cap
            text: section._key.isCapturing ? qsTr("Press a key…") : section._key.keyName
            capturing: section._key.isCapturing
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            anchors.verticalCenter: parent.verticalCenter
        }

        SecondaryButton {
            small: true
            text: section._key.isCapturing ? qsTr("Cancel") : qsTr("Change…")
            enabled: section.settings.canWatchKeys
            Accessible.description: section._key.instruction
            onClicked: section._key.isCapturing ? section._key.cancel() : capture()
            onActiveFocusChanged: if (!activeFocus) section._key.cancel()
            Keys.priority: Keys.BeforeItem
            Keys.onPressed: event => take(event)
            Keys.onShortcutOverride: event => event.accepted = section._key.isCapturing

            function capture() {
                forceActiveFocus(Qt.OtherFocusReason)
                section._key.begin()
            }

            function take(event: KeyEvent) {
                if (!section._key.isCapturing)
                    return
                event.accepted = true
                if (!event.isAutoRepeat)
                    section._key.press(event.key, event.nativeScanCode)
            }
        }
    }

    Note {
        width: parent.width
        visible: text.length > 0
        text: section.settings.keysNote
        bottomMargin: 12
    }

    SettingsRow {
        width: parent.width
        title: qsTr("Show Words While You Speak")
        subtitle: qsTr("Above the bar, where the service can; they may still change")

        Toggle {
            text: qsTr("Show Words While You Speak")
            checked: section.settings.showsLiveWords
            anchors.verticalCenter: parent.verticalCenter
            onToggled: {
                section.settings.showsLiveWords = checked
                checked = Qt.binding(() => section.settings.showsLiveWords)
            }
        }
    }

    SettingsRow {
        width: parent.width
        title: qsTr("Start at Login")
        subtitle: section.settings.startsAtLoginError.length > 0 ? section.settings.startsAtLoginError
                                                                 : qsTr("Velmo waits in the tray, ready to dictate")
        subtitleColor: section.settings.startsAtLoginError.length > 0 ? Theme.orangeText : Theme.secondary

        Toggle {
            text: qsTr("Start at Login")
            checked: section.settings.startsAtLogin
            anchors.verticalCenter: parent.verticalCenter
            onToggled: {
                section.settings.startsAtLogin = checked
                checked = Qt.binding(() => section.settings.startsAtLogin)
            }
        }
    }
}
