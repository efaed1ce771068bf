pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// One of several choices, the others in a menu.
T.Button {
    id: picker

    property var choices: []
    property int current: -1
    property string displayText

    signal chosen(int index)

    implicitWidth: 160
    implicitHeight: 36
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.ComboBox
    Accessible.description: displayText
    onClicked: menu.visible ? menu.close() : openMenu()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onDownPressed: openMenu()
    Keys.onUpPressed: openMenu()

    function openMenu() {
        menu.popup(picker, 0, picker.height + 4)
        menu.currentIndex = Math.max(0, current)
    }

    contentItem: Item {
        Label {
            Accessible.ignored: true
            x: 12
            width: parent.width - 44
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideRight
            text: picker.displayText
        }

        Symbol {
            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.up.chevron.down"
            pointSize: 12
            color: Theme.secondary
        }
    }

    background: Rectangle {
        radius: Theme.radiusField
        color: Theme.field
        border.width: 1
        border.color: picker.hovered || menu.visible ? Theme.outlineHover : Theme.outline
    }

    ContextMenu {
        id: menu

        width: picker.width
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

        Instantiator {
            model: picker.choices
            onObjectAdded: (index, action) => menu.insertItem(index, action)
            onObjectRemoved: (index, action) => menu.removeItem(action)

            MenuAction {
                required property int index
                required property string modelData

                text: modelData
                symbolName: "checkmark"
                symbolVisible: index === picker.current
                symbolColor: Theme.accent
                onTriggered: picker.chosen(index)
            }
        }
    }

    FocusRing { controlRadius: Theme.radiusField }
}
