import QtQuick
import Velmo.Controls

/// The line above a card that names what the card holds.
Row {
    property alias symbolName: symbol.name
    property alias text: label.text

    spacing: 8
    leftPadding: 4
    Accessible.role: Accessible.Heading
    Accessible.name: text

    Symbol {
        id: symbol
        visible: name.length > 0
        anchors.verticalCenter: parent.verticalCenter
        pointSize: 13
        color: Theme.accent
    }

    Label {
        id: label
        anchors.verticalCenter: parent.verticalCenter
        size: 13
        weight: Font.DemiBold
        Accessible.ignored: true
    }
}
