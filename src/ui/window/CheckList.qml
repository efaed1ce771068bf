pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// Languages that can be selected, one a row. Arrow keys go from row to row.
Column {
    id: list

    property alias model: rows.model

    signal toggled(string code)

    spacing: 4
    Accessible.role: Accessible.List

    Repeater {
        id: rows

        T.AbstractButton {
            id: row

            required property int index
            required property string code
            required property string name
            required property bool selected
            required property bool primary

            width: list.width
            implicitHeight: 40
            text: name
            focusPolicy: Qt.StrongFocus
            hoverEnabled: true
            Accessible.role: Accessible.CheckBox
            Accessible.name: name
            Accessible.description: primary ? qsTr("Primary") : ""
            Accessible.checkable: true
            Accessible.checked: selected
            onClicked: list.toggled(code)
            Keys.onReturnPressed: clicked()
            Keys.onUpPressed: rows.itemAt(index - 1)?.forceActiveFocus(Qt.BacktabFocusReason)
            Keys.onDownPressed: rows.itemAt(index + 1)?.forceActiveFocus(Qt.TabFocusReason)

            contentItem: Item {
                Symbol {
                    id: mark
                    x: 12
                    anchors.verticalCenter: parent.verticalCenter
                    name: row.selected ? "checkmark.circle.fill" : "circle"
                    pointSize: 15
                    color: row.selected ? Theme.accent : Theme.placeholder
                }

                Label {
                    Accessible.ignored: true
                    anchors.left: mark.right
                    anchors.leftMargin: 10
                    anchors.verticalCenter: parent.verticalCenter
                    text: row.name
                }

                Label {
                    Accessible.ignored: true
                    visible: row.primary
                    anchors.right: parent.right
                    anchors.rightMargin: 12
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Primary")
                    size: 12
                    color: Theme.secondary
                }
            }

            background: Rectangle {
                radius: Theme.radiusRow
                color: row.down ? Qt.darker(Theme.rowHover, 1.05) : row.hovered ? Theme.rowHover : Theme.field
            }

            FocusRing { controlRadius: Theme.radiusRow }
        }
    }
}
