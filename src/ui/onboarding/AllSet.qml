import QtQuick
import Velmo.Controls
import Velmo.Models
import Velmo.Speech

/// The end of the set-up: how to dictate from now on, and a field to try it in. Its button has the keyboard.
Column {
    id: end

    required property SpeechTrial trial
    property bool shown: false
    property alias text: sentence.text

    signal done()

    visible: opacity > 0
    opacity: shown ? 1 : 0
    onShownChanged: if (shown) takeKeyboard()
    Component.onCompleted: if (shown) takeKeyboard()

    function takeKeyboard() {
        button.forceActiveFocus(Qt.TabFocusReason)
        button.focusReason = Qt.TabFocusReason // also where the window does not have the keyboard yet
    }

    Behavior on opacity {
        NumberAnimation { duration: Theme.onboardingTime; easing.type: Easing.InOutQuad }
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 10

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 28
            height: 28
            radius: 14
            color: Theme.tint
            border.width: 1
            border.color: Theme.faded(Theme.accent, 0.25)

            Symbol {
                anchors.centerIn: parent
                name: "checkmark"
                pointSize: 13
                color: Theme.accent
            }
        }

        Label {
            text: qsTr("You're all set!")
            size: 20
            weight: Font.Bold
            Accessible.role: Accessible.Heading
        }
    }

    Item {
        width: 1
        height: 4
    }

    Label {
        id: sentence
        x: 40
        width: parent.width - 80
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        size: 14
        color: Theme.secondary
    }

    Item {
        width: 1
        height: 16
    }

    TryField {
        x: 40
        width: parent.width - 80
        fieldHeight: 64
        trial: end.trial
    }

    Item {
        width: 1
        height: 16
    }

    PrimaryButton {
        id: button
        anchors.horizontalCenter: parent.horizontalCenter
        implicitWidth: 160
        text: qsTr("Done")
        onClicked: end.done()
    }
}
