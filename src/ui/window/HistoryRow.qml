import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// One dictation of the history; the first of a day is headed by the day, and together they look like one card.
T.Control {
    id: row

    required property int index
    required property string entryId
    required property string text
    required property string time
    required property string day
    required property bool isFirst
    required property bool isLast
    property bool menuIsOpen: false

    readonly property bool _active: hovered || activeFocus || menuIsOpen || button.activeFocus

    /// The menu should open at that place of the item.
    signal menuRequested(Item item, real x, real y)
    signal copyRequested()
    signal removeRequested()

    topPadding: isFirst ? (index > 0 ? 24 + 16 + 8 : 8 + 16 + 8) : 0
    bottomPadding: 1 // the divider, or the card's edge
    implicitHeight: words.y + words.height + 12 + bottomPadding
    focusPolicy: Qt.ClickFocus
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: day + ", " + time + ", " + text

    function openMenuByButton() {
        menuRequested(button, button.width - 160, button.height + 4)
    }

    Keys.onMenuPressed: openMenuByButton()
    Keys.onReturnPressed: openMenuByButton()
    Keys.onSpacePressed: openMenuByButton()
    Keys.onDeletePressed: removeRequested()
    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)
            openMenuByButton()
        else if (event.matches(StandardKey.Copy))
            copyRequested()
        else
            event.accepted = false
    }

    Label {
        visible: row.isFirst
        x: 4
        y: row.topPadding - 24
        text: row.day
        size: 12
        weight: Font.DemiBold
        capitals: true
        color: Theme.secondary
        Accessible.role: Accessible.Heading
    }

    background: Item {
        CardPart {
            y: row.topPadding
            width: parent.width
            height: parent.height - y
            isFirst: row.isFirst
            isLast: row.isLast
            active: row._active
        }
    }

    Label {
        id: timeLabel
        x: 17
        anchors.baseline: words.baseline
        text: row.time
        weight: Font.Medium
        tabularFigures: true
        color: Theme.secondary
    }

    Label {
        id: words
        x: 81
        y: row.topPadding + (row.isFirst ? 1 : 0) + 12
        width: row.width - x - 45 // keeps clear of the button, so that no line moves under the pointer
        text: row.text
        size: 14
        wrapMode: Text.Wrap
    }

    Divider {
        visible: !row.isLast
        x: 81
        y: parent.height - height
        width: parent.width - x - 1
    }

    SymbolButton {
        id: button
        visible: row._active
        x: row.width - width - 8
        y: row.topPadding + 8
        symbolName: "ellipsis"
        text: qsTr("More for %1").arg(row.time)
        focusPolicy: row.activeFocus || activeFocus ? Qt.StrongFocus : Qt.NoFocus
        onClicked: row.openMenuByButton()
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onClicked: mouse => row.menuRequested(row, mouse.x, mouse.y)
    }

    Rectangle {
        y: row.topPadding
        visible: row.visualFocus
        width: parent.width
        height: parent.height - y
        color: "transparent"
        radius: Theme.radiusCard
        border.color: Theme.accent
        border.width: 2
    }
}
