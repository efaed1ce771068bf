import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Velmo.Controls

/// The frame of a page: title with an optional count, a place for a button at its end, an optional description, and
/// blocks below each other that scroll. What has the keyboard is always in sight.
FocusScope {
    id: page

    property string title
    property string badge
    property string description
    property real descriptionWidth: 560
    property TextField searchField: null
    /// What a notice at the lower edge covers.
    property real coveredBelow: 0
    property alias trailing: trailingPlace.data
    property alias scrolling: flickable
    default property alias blocks: column.data

    // From the beginning, or texts are laid out twice.
    width: parent?.width ?? 0
    height: parent?.height ?? 0

    Shortcut {
        sequences: [StandardKey.Find] // qmllint disable unqualified
        enabled: page.visible && page.searchField !== null
        onActivated: {
            page.searchField.forceActiveFocus(Qt.ShortcutFocusReason)
            page.searchField.selectAll()
        }
    }

    readonly property Item _focused: visible ? Window.activeFocusItem : null

    // Later, since the keyboard can go on at once from a list to the row in it.
    on_FocusedChanged: Qt.callLater(revealFocused) // qmllint disable type
    onCoveredBelowChanged: Qt.callLater(revealFocused) // qmllint disable type

    // An item that goes away would take the keyboard along.
    readonly property bool _focusIsLost: _focused !== null && (_focused === page || !_focused.visible)
    on_FocusIsLostChanged: Qt.callLater(takeFocusBack) // qmllint disable type

    function takeFocusBack() {
        if (_focusIsLost)
            start.forceActiveFocus(Qt.OtherFocusReason)
    }

    function revealFocused() {
        if (_focused && _focused !== start && isInside(_focused))
            reveal(_focused)
    }

    function isInside(item: Item): bool {
        let ancestor = item
        while (ancestor && ancestor !== column)
            ancestor = ancestor.parent
        return ancestor === column
    }

    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp
        if (event.accepted)
            scrollTo(flickable.contentY + (event.key === Qt.Key_PageDown ? 0.9 : -0.9) * flickable.height)
    }

    function scrollTo(y: real) {
        flickable.contentY = Math.max(0, Math.min(y, flickable.contentHeight - flickable.height))
    }

    /// Scrolls no further than it must.
    function reveal(item: Item) {
        const margin = 12
        const area = item.mapToItem(flickable.contentItem, 0, 0, item.width, item.height)
        const lowest = area.y - margin
        const seen = flickable.height - coveredBelow
        const highest = area.y + Math.min(area.height, seen - 2 * margin) + margin - seen
        scrollTo(Math.max(highest, Math.min(flickable.contentY, lowest)))
    }

    Flickable {
        id: flickable
        anchors.fill: parent
        contentWidth: width
        contentHeight: column.y + column.height + Math.max(24, page.coveredBelow)
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: ScrollBar {}

        Column {
            id: column
            x: 24
            y: 22
            width: parent.width - 48
            spacing: 16

            Item {
                id: start
                width: parent.width
                height: heading.height
                focus: true // where the keyboard waits in front of the first control
                Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

                Column {
                    id: heading
                    width: parent.width
                    spacing: 4

                    Row {
                        height: 36
                        spacing: 10
                        visible: page.title.length > 0

                        Label {
                            anchors.verticalCenter: parent.verticalCenter
                            text: page.title
                            size: 24
                            weight: Font.Bold
                            Accessible.role: Accessible.Heading
                        }

                        Badge {
                            anchors.verticalCenter: parent.verticalCenter
                            visible: text.length > 0
                            text: page.badge
                        }
                    }

                    Label {
                        visible: text.length > 0
                        width: Math.min(parent.width, page.descriptionWidth)
                        text: page.description
                        fixedLineHeight: 20
                        color: Theme.secondary
                        wrapMode: Text.Wrap
                    }
                }

                Row {
                    id: trailingPlace
                    anchors.right: parent.right
                    height: 36
                }
            }
        }
    }
}
