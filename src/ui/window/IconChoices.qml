pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// The symbols a mode can have, six in a row. Arrow keys choose.
Grid {
    id: grid

    property alias names: buttons.model
    property string current

    signal chosen(string name)

    columns: 6
    columnSpacing: (width - columns * 40) / (columns - 1)
    rowSpacing: 8
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Icon")

    function choose(index: int) {
        const button = buttons.itemAt(index)
        if (!button)
            return
        button.forceActiveFocus(Qt.TabFocusReason)
        chosen(names[index])
    }

    Repeater {
        id: buttons

        T.AbstractButton {
            id: choice

            required property int index
            required property string modelData

            implicitWidth: 40
            implicitHeight: 40
            checked: modelData === grid.current
            focusPolicy: checked || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
            hoverEnabled: true
            Accessible.role: Accessible.RadioButton
            Accessible.name: modelData.split(".").join(" ")
            Accessible.checkable: true
            Accessible.checked: checked
            onClicked: grid.chosen(modelData)
            Keys.onLeftPressed: grid.choose(index - 1)
            Keys.onRightPressed: grid.choose(index + 1)
            Keys.onUpPressed: grid.choose(index - grid.columns)
            Keys.onDownPressed: grid.choose(index + grid.columns)

            contentItem: Item {
                Symbol {
                    anchors.centerIn: parent
                    name: choice.modelData
                    pointSize: 14
                    color: choice.checked ? Theme.accent : choice.hovered ? Theme.ink : Theme.secondary
                }
            }

            background: Rectangle {
                radius: Theme.radiusRow
                color: choice.checked ? Theme.tint : choice.hovered ? Theme.field : Theme.card
                border.width: choice.checked ? 2 : 1
                border.color: choice.checked ? Theme.accent : Theme.outline
            }

            FocusRing { controlRadius: Theme.radiusRow }
        }
    }
}
