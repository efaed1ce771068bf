pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Models

/// The pages by name. Tab stops here once; arrow keys move, Space and Return choose.
Item {
    id: sidebar

    required property MainWindowView view

    function focusPage(page: int) {
        const row = upperRows.itemAt(page) ?? lowerRows.itemAt(page - upperRows.count)
        row?.forceActiveFocus(Qt.TabFocusReason)
    }

    Row {
        x: 16
        y: 20
        height: 26
        spacing: 8

        Symbol {
            name: "waveform.circle.fill"
            pointSize: 22
            color: Theme.accent
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: "Velmo"
            size: 20
            weight: Font.Bold
        }
    }

    Column {
        id: upper
        x: 8
        y: 62
        width: parent.width - 16
        spacing: 2

        Repeater {
            id: upperRows
            model: sidebar.view.mainPages
            delegate: SidebarRow {
                view: sidebar.view
                onKeyboardMoved: page => sidebar.focusPage(page)
            }
        }
    }

    Divider {
        id: divider
        anchors.top: upper.bottom
        anchors.topMargin: 12
        x: 12
        width: parent.width - 25
    }

    Column {
        id: lower
        anchors.top: divider.bottom
        anchors.topMargin: 12
        x: 8
        width: parent.width - 16
        spacing: 2

        Repeater {
            id: lowerRows
            model: sidebar.view.lowerPages
            delegate: SidebarRow {
                view: sidebar.view
                onKeyboardMoved: page => sidebar.focusPage(page)
            }
        }
    }

    Label {
        x: 20
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
        text: sidebar.view.versionText
        size: 11
        color: Theme.secondary
    }

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.hairline
    }
}
