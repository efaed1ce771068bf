import QtQuick
import Velmo.Controls
import Velmo.Models

/// What can be done with a recent text; rows can come and go while it is open.
ContextMenu {
    id: menu

    required property MenuBarView view
    property string entryId
    property Item focusAfter: null

    function openFor(newEntryId: string, item: Item, at: point, whoGetsKeyboardAfter: Item) {
        entryId = newEntryId
        focusAfter = whoGetsKeyboardAfter
        popup(item, at)
    }

    onClosed: focusAfter.forceActiveFocus()

    MenuAction {
        text: qsTr("Copy")
        symbolName: "doc.on.doc"
        onTriggered: menu.view.copy(menu.entryId)
    }

    MenuAction {
        text: qsTr("Delete")
        symbolName: "trash"
        destructive: true
        onTriggered: menu.view.remove(menu.entryId)
    }
}
