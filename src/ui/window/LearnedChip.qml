import QtQuick
import Velmo.Controls

/// A learned word.
Rectangle {
    id: chip

    required property string modelData

    implicitWidth: word.implicitWidth + 20
    implicitHeight: 28
    radius: Theme.radiusRow
    color: Theme.field

    Label {
        id: word
        x: 10
        width: parent.width - 20
        anchors.verticalCenter: parent.verticalCenter
        text: chip.modelData
        elide: Text.ElideRight
        maximumLineCount: 1
    }
}
