pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Velmo.Controls
import Velmo.Models

/// The history by days. One stop for the keyboard: arrow keys move from row to row. At most a hundred rows, so all of
/// them exist.
FocusScope {
    id: list

    required property HomeView view
    required property Flickable scrolling
    property int currentIndex: 0

    implicitHeight: rows.height
    activeFocusOnTab: true

    onActiveFocusChanged: {
        if (activeFocus && Window.activeFocusItem === list)
            focusRow(currentIndex)
    }

    function focusRow(index: int) {
        const row = repeater.itemAt(Math.max(0, Math.min(index, repeater.count - 1)))
        if (row)
            row.forceActiveFocus(Qt.TabFocusReason)
    }

    Keys.onUpPressed: focusRow(currentIndex - 1)
    Keys.onDownPressed: focusRow(currentIndex + 1)
    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_Home)
            focusRow(0)
        else if (event.key === Qt.Key_End)
            focusRow(repeater.count - 1)
        else
            event.accepted = false
    }

    Column {
        id: rows
        width: parent.width

        Repeater {
            id: repeater
            model: list.view.history

            HistoryRow {
                width: rows.width
                menuIsOpen: menu.opened && menu.entryId === entryId
                onActiveFocusChanged: {
                    if (activeFocus)
                        list.currentIndex = index
                }
                onTextHasFocusChanged: {
                    if (textHasFocus)
                        list.currentIndex = index
                }
                onMenuRequested: (item, x, y) => menu.openFor(this, item, x, y)
                onCopyRequested: list.view.copy(entryId)
                onRemoveRequested: list.removeRow(this)
            }

            // The reader keeps the place when a dictation is added above it.
            onItemAdded: (index, item) => {
                if (index === 0 && list.scrolling.contentY > list.y && count > 1)
                    list.scrolling.contentY += item.height
            }
        }
    }

    MouseArea {
        anchors.fill: rows
        acceptedButtons: Qt.RightButton
        onClicked: mouse => {
            const row = rows.childAt(mouse.x, mouse.y) as HistoryRow
            row?.menuRequested(row, mouse.x, mouse.y - row.y)
        }
    }

    /// The keyboard goes on with the row that takes the place.
    function removeRow(row: HistoryRow) {
        const index = row.index
        const hadFocus = row.activeFocus || (menu.row === row && menu.rowHadFocus)
        view.remove(row.entryId)
        // Later, as a menu that closes gives the focus back first.
        if (hadFocus)
            Qt.callLater(focusRow, index) // qmllint disable type
    }

    ContextMenu {
        id: menu

        property HistoryRow row: null
        property bool rowHadFocus: false
        readonly property string entryId: row?.entryId ?? ""

        function openFor(row: HistoryRow, item: Item, x: real, y: real) {
            menu.row = row
            rowHadFocus = row.activeFocus
            popup(item, x, y)
        }

        MenuAction {
            text: qsTr("Copy")
            symbolName: "doc.on.doc"
            onTriggered: menu.row.copyRequested()
        }

        MenuAction {
            text: qsTr("Delete")
            symbolName: "trash"
            destructive: true
            onTriggered: menu.row.removeRequested()
        }
    }
}
