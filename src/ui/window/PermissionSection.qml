pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Models

/// What Velmo needs of the desktop.
SettingsSection {
    id: section

    required property SettingsView settings

    symbolName: "lock.shield"
    title: qsTr("Permissions")
    cardPadding: 4

    Repeater {
        model: section.settings.permissions

        SettingsRow {
            id: row

            required property int index
            required title
            required subtitle
            required property bool granted
            required property bool canOpenSettings

            width: parent.width
            isFirst: index === 0
            Accessible.role: Accessible.StaticText
            Accessible.name: title + ", " + (granted ? qsTr("granted") : qsTr("missing"))
            Accessible.description: subtitle

            leading: Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: row.granted ? "checkmark.circle.fill" : "exclamationmark.circle.fill"
                pointSize: 16
                color: row.granted ? Theme.success : Theme.orangeText
            }

            SecondaryButton {
                visible: row.canOpenSettings
                small: true
                text: qsTr("Open Settings")
                Accessible.description: row.title
                onClicked: section.settings.openSettings(row.index)
            }
        }
    }
}
