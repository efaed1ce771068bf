import QtQuick
import Velmo.Controls

/// What stands in place of a list with nothing in it; on a card of its own unless it lies on one.
Rectangle {
    id: empty

    property string symbolName
    property string title
    property string description
    property bool bare: false

    radius: Theme.radiusCard
    color: bare ? "transparent" : Theme.card
    border.color: Theme.cardHairline
    border.width: bare ? 0 : 1

    Column {
        anchors.centerIn: parent
        width: parent.width - 32

        Symbol {
            visible: empty.symbolName.length > 0
            anchors.horizontalCenter: parent.horizontalCenter
            name: empty.symbolName
            pointSize: 28
            color: Theme.ink
            opacity: 0.3
        }

        Item { width: 1; height: 12; visible: empty.symbolName.length > 0 }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: empty.title
            size: 14
            weight: Font.Medium
        }

        Item { width: 1; height: 4; visible: empty.description.length > 0 }

        Label {
            visible: text.length > 0
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: empty.description
            color: Theme.secondary
        }
    }
}
