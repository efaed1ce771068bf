import QtQuick
import QtQuick.Layouts
import Velmo.Controls
import Velmo.Models

/// The language model that modes send texts to: none, one found on this machine, or one at an address.
SettingsSection {
    id: section

    required property SpeechView speech

    symbolName: "sparkles"
    title: qsTr("Language Model")

    SettingsRow {
        width: parent.width
        isFirst: true
        stacked: width < 460
        title: qsTr("Language Model for Modes")
        subtitle: section.speech.languageModelNote

        Picker {
            implicitWidth: 220
            choices: section.speech.languageModelNames
            current: section.speech.languageModelRow
            displayText: section.speech.languageModelNames[section.speech.languageModelRow] ?? ""
            Accessible.name: qsTr("Language Model for Modes")
            onChosen: row => section.speech.chooseLanguageModel(row)
        }
    }

    RowLayout {
        width: parent.width
        visible: section.speech.isAddressAsked
        spacing: 8
        onVisibleChanged: if (visible) address.forceActiveFocus(Qt.OtherFocusReason)

        TextField {
            id: address
            Layout.fillWidth: true
            placeholderText: "http://127.0.0.1:11434"
            Accessible.name: qsTr("Address")
            onAccepted: use.clicked()
        }

        TextField {
            id: model
            Layout.preferredWidth: 140
            placeholderText: qsTr("Model (optional)")
            Accessible.name: qsTr("Model")
            onAccepted: use.clicked()
        }

        SecondaryButton {
            id: use
            text: qsTr("Use")
            enabled: address.text.trim().length > 0
            Accessible.description: qsTr("Language Model for Modes")
            onClicked: section.speech.useLanguageModelAt(address.text, model.text)
        }
    }

    Warning {
        visible: text.length > 0
        maximumWidth: parent.width
        topPadding: 8
        text: section.speech.languageModelProblem
    }

    Item {
        visible: section.speech.isAddressAsked || section.speech.languageModelProblem.length > 0
        width: 1
        height: 14
    }
}
