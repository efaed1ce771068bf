import QtQuick

/// A white sheet of the page with a hairline around it. Children lie inside its padding.
Rectangle {
    id: card

    property real padding: 16
    default property alias content: inside.data

    implicitWidth: inside.childrenRect.width + 2 * padding
    implicitHeight: inside.childrenRect.height + 2 * padding
    radius: Theme.radiusCard
    color: Theme.card
    border.color: Theme.hairline
    border.width: 1

    Item {
        id: inside
        anchors.fill: parent
        anchors.margins: card.padding
    }
}
