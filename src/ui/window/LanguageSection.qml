import QtQuick
import Velmo.Controls
import Velmo.Models

/// Which languages are dictated, and which of their rules clean the text.
SettingsSection {
    id: section

    required property SettingsView settings

    topGap: 0
    symbolName: "globe"
    title: qsTr("Language")

    SettingsRow {
        width: parent.width
        isFirst: true
        title: qsTr("Primary Language")

        Picker {
            implicitWidth: 168
            choices: section.settings.choice.names
            current: section.settings.choice.primaryRow
            displayText: section.settings.choice.primaryName
            Accessible.name: qsTr("Primary Language")
            onChosen: row => section.settings.choice.choosePrimary(row)
        }
    }

    Divider {
        width: parent.width
    }

    Item {
        width: parent.width
        height: 40

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Additional Languages")
            size: 14
            weight: Font.Medium
            Accessible.role: Accessible.Heading
        }
    }

    CheckList {
        width: parent.width
        model: section.settings.languages
        onToggled: code => section.settings.toggleLanguage(code)
    }

    Item {
        width: 1
        height: 16
    }

    SettingsRow {
        width: parent.width
        verticalPadding: 15
        stacked: width < 500
        title: qsTr("Cleanup Rules")
        subtitle: qsTr("Spoken punctuation, filler words and the English “I”")

        Segments {
            Accessible.name: qsTr("Cleanup Rules")
            choices: [qsTr("Selected languages"), qsTr("Spoken language")]
            current: section.settings.followsSpokenLanguage ? 1 : 0
            onChosen: index => section.settings.followsSpokenLanguage = index === 1
        }
    }
}
