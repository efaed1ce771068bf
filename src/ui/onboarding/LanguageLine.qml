import QtQuick
import Velmo.Controls
import Velmo.Models

/// Which language is spoken, to be changed here, and what recognises it.
Item {
    id: line

    required property OnboardingView onboarding

    implicitHeight: Math.max(picker.height, texts.height)

    Column {
        id: texts
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - picker.width - 16
        spacing: 2

        Label {
            text: qsTr("Primary Language")
            size: 14
            weight: Font.Medium
        }

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            textFormat: Text.StyledText
            text: line.onboarding.speech
            size: 12
            color: line.onboarding.isSpeechMissing ? Theme.orangeText : Theme.secondary
        }
    }

    Picker {
        id: picker
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        implicitWidth: 160
        choices: line.onboarding.languages.names
        current: line.onboarding.languages.primaryRow
        displayText: line.onboarding.languages.primaryName
        Accessible.name: qsTr("Primary Language")
        onChosen: row => line.onboarding.languages.choosePrimary(row)
    }
}
