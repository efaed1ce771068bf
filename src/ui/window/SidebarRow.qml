import QtQuick
import QtQuick.Templates as T
import Velmo.Controls
import Velmo.Models

/// One page in the sidebar.
T.AbstractButton {
    id: row

    required property sidebarItem modelData
    required property MainWindowView view
    readonly property bool selected: view.selectedPage === modelData.page

    /// The keyboard goes to the row of that page.
    signal keyboardMoved(int page)

    width: parent?.width ?? 0
    implicitHeight: 36
    text: modelData.title
    hoverEnabled: true
    focusPolicy: selected || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.role: Accessible.PageTab
    Accessible.name: text
    Accessible.selected: selected

    onClicked: view.selectedPage = modelData.page
    Keys.onUpPressed: keyboardMoved(modelData.page - 1)
    Keys.onDownPressed: keyboardMoved(modelData.page + 1)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        Symbol {
            id: symbol
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            name: row.modelData.symbolName
            pointSize: 15
            color: row.selected ? Theme.accent : Theme.secondary
        }

        Label {
            anchors.left: symbol.right
            anchors.leftMargin: 10
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            elide: Text.ElideRight
            weight: row.selected ? Font.DemiBold : Font.Normal
        }
    }

    background: Rectangle {
        radius: Theme.radiusRow
        color: row.selected ? Theme.tint : row.down ? Theme.pressed : row.hovered ? Theme.hoverRow : "transparent"
    }

    FocusRing { controlRadius: Theme.radiusRow }
}
