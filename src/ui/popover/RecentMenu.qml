import QtQuick
import Velmo.Controls

/// What can be done with a recent text.
ContextMenu {
    id: menu

    required property QtObject view
    property int row: -1
    property Item focusAfter: null

    function openFor(newRow: int, item: Item, at: point, whoGetsKeyboardAfter: Item) {
        row = newRow
        focusAfter = whoGetsKeyboardAfter
        popup(item, at)
    }

    onClosed: focusAfter.forceActiveFocus()

    MenuAction {
        text: qsTr("Copy")
        symbolName: "doc.on.doc"
        onTriggered: menu.view.copyRow(menu.row)
    }

    MenuAction {
        text: qsTr("Delete")
        symbolName: "trash"
        destructive: true
        onTriggered: menu.view.removeRow(menu.row)
    }
}
