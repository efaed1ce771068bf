import QtQuick
import Velmo.Controls

/// The microphone is open.
Row {
    spacing: 5
    Accessible.role: Accessible.StaticText
    Accessible.name: label.text

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 6
        height: 6
        radius: 3
        color: Theme.red
    }

    Label {
        id: label
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("LIVE")
        size: 9
        weight: Font.Bold
        capitals: true
        color: Theme.red
        Accessible.ignored: true
    }
}
