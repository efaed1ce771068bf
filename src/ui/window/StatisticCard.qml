import QtQuick
import Velmo.Controls
import Velmo.Models

/// One figure about the use of Velmo.
Rectangle {
    id: card

    required property statisticCard modelData

    implicitHeight: words.height + 34
    radius: Theme.radiusCard
    color: Theme.card
    border.color: Theme.cardHairline
    border.width: 1
    Accessible.role: Accessible.StaticText
    Accessible.name: modelData.value + " " + modelData.label

    Column {
        id: words
        y: 17
        width: parent.width

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: card.modelData.emoji
            size: 23 // the emoji are drawn smaller than the letters of their size
            topPadding: -4
            height: 24
            Accessible.ignored: true
        }

        Item { width: 1; height: 4 }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: card.modelData.value
            size: 18
            weight: Font.Bold
            Accessible.ignored: true
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: card.modelData.label
            size: 11
            weight: Font.Medium
            color: Theme.secondary
            Accessible.ignored: true
        }
    }
}
