import QtQuick
import QtQuick.Layouts
import Velmo.Controls
import Velmo.Models

/// A field to dictate into, and a button that begins and ends it. The text comes as it does in every program, by the paste
/// shortcut, so the keyboard is given to the field for it.
Column {
    id: place

    required property SpeechTrial trial
    property alias fieldHeight: field.implicitHeight

    spacing: 8

    TextArea {
        id: field
        width: parent.width
        placeholderText: qsTr("Press the button and speak. The text comes here.")
        accessibleName: qsTr("Dictate here")
        onEdited: place.trial.textArrived()
    }

    RowLayout {
        width: parent.width
        spacing: 12

        SecondaryButton {
            text: place.trial.isRecording ? qsTr("Stop") : qsTr("Try It")
            symbolName: place.trial.isRecording ? "stop.fill" : "mic"
            busy: place.trial.isTranscribing
            Layout.minimumWidth: 96
            Accessible.description: place.trial.outcome
            onClicked: {
                field.input.forceActiveFocus(Qt.OtherFocusReason)
                if (!busy)
                    place.trial.toggle()
            }
        }

        Label {
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            size: 12
            text: place.trial.isRecording ? qsTr("Listening...")
                : place.trial.isTranscribing ? qsTr("Transcribing...") : place.trial.outcome
            color: place.trial.hasFailed ? Theme.orangeText : Theme.secondary
            Accessible.role: Accessible.StatusBar
        }
    }
}
