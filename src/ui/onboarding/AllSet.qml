import QtQuick
import Velmo.Controls

/// The end of the set-up: how to dictate from now on. Its button has the keyboard.
Column {
    id: end

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

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 48
        height: 48
        radius: 24
        color: Theme.tint
        border.width: 1
        border.color: Theme.faded(Theme.accent, 0.25)

        Symbol {
            anchors.centerIn: parent
            name: "checkmark"
            pointSize: 20
            color: Theme.accent
        }
    }

    Item {
        width: 1
        height: 12
    }

    Label {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: qsTr("You're all set!")
        size: 20
        weight: Font.Bold
        Accessible.role: Accessible.Heading
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
        height: 20
    }

    PrimaryButton {
        id: button
        anchors.horizontalCenter: parent.horizontalCenter
        implicitWidth: 160
        text: qsTr("Done")
        onClicked: end.done()
    }
}
