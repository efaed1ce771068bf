pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// Modes as cards, in two columns where there is room. One of them can be reached with Tab, the chosen one if it is among
/// them; the arrow keys lead to the others and on to the grid above or below.
Grid {
    id: grid

    property alias modes: cards.model
    property bool dimmed: false
    property bool editable: false
    property int current: 0

    signal chosen(string id)
    signal editRequested(int row)
    signal removeRequested(int row)
    signal leftAbove()
    signal leftBelow()
    /// The last mode is removed, and it had the keyboard.
    signal emptied(int reason)

    readonly property real cardWidth: columns === 2 ? (width - 8) / 2 : width

    columns: width >= 560 ? 2 : 1
    spacing: 8
    Accessible.role: Accessible.Grouping

    function enter() {
        go(Math.min(current, cards.count - 1))
    }

    function go(row: int) {
        if (row < 0)
            leftAbove()
        else if (row >= cards.count)
            leftBelow()
        else
            cards.itemAt(row).forceActiveFocus(Qt.TabFocusReason)
    }

    /// The keyboard goes on with the mode that takes the place.
    function remove(card: ModeCard) {
        const hadFocus = card.hasKeyboard
        const reason = (Window.activeFocusItem as T.Control)?.visualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason
        const row = card.index
        removeRequested(row)
        if (!hadFocus)
            return
        if (cards.count > 0)
            cards.itemAt(Math.min(row, cards.count - 1)).forceActiveFocus(reason)
        else
            emptied(reason)
    }

    Repeater {
        id: cards

        ModeCard {
            width: grid.cardWidth
            dimmed: grid.dimmed
            editable: grid.editable
            isTabStop: index === Math.min(grid.current, cards.count - 1)
            onChosenChanged: if (chosen) grid.current = index
            Component.onCompleted: if (chosen) grid.current = index
            // Later, as a card that still has the keyboard cannot stop being reached with Tab.
            onActiveFocusChanged: if (activeFocus) grid.current = index
            onClicked: grid.chosen(modeId)
            onEditRequested: grid.editRequested(index)
            onRemoveRequested: grid.remove(this)
            Keys.onLeftPressed: grid.go(index - 1)
            Keys.onRightPressed: grid.go(index + 1)
            Keys.onUpPressed: grid.go(index - grid.columns)
            Keys.onDownPressed: grid.go(index + grid.columns)
        }
    }
}
