import QtQuick
import Velmo.Controls

/// A recent text with its age. The menu opens with the right button, with its own button, and by the Menu key.
Item {
    id: row

    required property int index
    required property string entryId
    required property string text
    required property string timeAgo
    property bool isLast: false

    readonly property bool _isCurrent: ListView.isCurrentItem && ListView.view.activeFocus
    readonly property bool _isMarked: hover.hovered || _isCurrent

    signal menuRequested(item: Item, at: point)

    implicitHeight: words.implicitHeight + 20 + (isLast ? 0 : 1)
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.description: timeAgo
    Accessible.focusable: true
    Accessible.focused: _isCurrent

    function openMenuAtButton() {
        menuRequested(more, Qt.point(more.width - 160, more.height + 4))
    }

    Keys.onMenuPressed: openMenuAtButton()
    Keys.onReturnPressed: openMenuAtButton()
    Keys.onSpacePressed: openMenuAtButton()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier) {
            openMenuAtButton()
            event.accepted = true
        }
    }

    HoverHandler { id: hover }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => row.menuRequested(row, eventPoint.position)
    }

    Rectangle {
        anchors.fill: parent
        radius: row.index === 0 || row.isLast ? Theme.radiusField - 1 : 0
        color: row._isMarked ? Theme.hoverRow : "transparent"
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        visible: row._isCurrent
        radius: Theme.radiusRow
        color: "transparent"
        border.width: 2
        border.color: Theme.accent
    }

    Column {
        id: words
        x: 12
        y: 10
        width: parent.width - 24
        spacing: 1

        Label {
            width: parent.width
            text: row.text
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            Accessible.ignored: true
        }

        Label {
            text: row.timeAgo
            size: 11
            color: Theme.secondary
            Accessible.ignored: true
        }
    }

    // The text stays as it is wrapped when the button comes, so it has to cover some of it.
    Rectangle {
        anchors.fill: more
        visible: more.visible
        radius: Theme.radiusSmall
        color: Theme.hoveredRow
    }

    SymbolButton {
        id: more
        x: parent.width - width - 8
        y: 8
        visible: row._isMarked
        symbolName: "ellipsis"
        text: qsTr("More for %1").arg(row.text)
        focusPolicy: Qt.NoFocus
        onClicked: row.openMenuAtButton()
    }

    Divider {
        visible: !row.isLast
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
