import QtQuick
import Velmo.Controls

Column {
    property alias text: label.text

    spacing: 16

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: "waveform"
        pointSize: 32
        weight: Symbol.Light
        color: Theme.inkAt(0.3)
    }

    Label {
        id: label
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        color: Theme.secondary
    }
}
