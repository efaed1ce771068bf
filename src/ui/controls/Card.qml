import QtQuick

/// A white sheet of the page with a hairline around it. Children lie inside its padding, which the hairline adds to.
Rectangle {
    id: card

    property real padding: 16
    default property alias content: inside.data

    implicitWidth: inside.childrenRect.width + 2 * (padding + 1)
    implicitHeight: inside.childrenRect.height + 2 * (padding + 1)
    radius: Theme.radiusCard
    color: Theme.card
    border.color: Theme.cardHairline
    border.width: 1

    Item {
        id: inside
        anchors.fill: parent
        anchors.margins: card.padding + 1
    }
}
