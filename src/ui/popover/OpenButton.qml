import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// A quiet button with a symbol and words, which shows what it is when the pointer comes.
T.Button {
    id: button

    text: qsTr("Open Velmo")
    implicitWidth: contentItem.implicitWidth + 16
    implicitHeight: 24
    leftPadding: 8
    rightPadding: 8
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: text
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: Row {
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "macwindow"
            pointSize: 11
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            size: 11
            weight: Font.Medium
        }
    }

    background: Rectangle {
        radius: Theme.radiusSmall
        color: button.down ? Theme.pressed : button.hovered ? Theme.hoverSymbol : "transparent"
    }

    FocusRing { controlRadius: Theme.radiusSmall }
}
