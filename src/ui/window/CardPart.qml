import QtQuick
import Velmo.Controls

/// The piece of a card behind one row of it: rounded at the card's ends only.
Item {
    id: part

    required property bool isFirst
    required property bool isLast
    property bool active: false

    clip: true

    Rectangle {
        y: part.isFirst ? 0 : -Theme.radiusCard
        width: parent.width
        height: parent.height - y + (part.isLast ? 0 : Theme.radiusCard)
        radius: Theme.radiusCard
        color: part.active ? Qt.tint(Theme.card, Theme.inkAt(0.035)) : Theme.card
        border.color: Theme.cardHairline
        border.width: 1
    }
}
