import QtQuick
import Velmo.Controls
import Velmo.Models

/// What this Velmo is.
SettingsSection {
    id: section

    required property SettingsView settings

    symbolName: "info.circle"
    title: qsTr("About")

    SettingsRow {
        width: parent.width
        isFirst: true
        verticalPadding: 6
        title: qsTr("Version")

        SelectableText {
            anchors.verticalCenter: parent.verticalCenter
            text: section.settings.version
            color: Theme.secondary
        }
    }

    SettingsRow {
        width: parent.width
        verticalPadding: 6
        title: qsTr("Device ID")
        titleSize: 13
        titleWeight: Font.Normal

        SelectableText {
            anchors.verticalCenter: parent.verticalCenter
            text: section.settings.deviceId
            size: 11
            color: Theme.secondary
        }
    }
}
