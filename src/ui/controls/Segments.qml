pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// One of a few choices, all in sight. Arrow keys choose.
Rectangle {
    id: segments

    property var choices: []
    property int current: 0

    signal chosen(int index)

    implicitWidth: row.implicitWidth + 6
    implicitHeight: 36
    radius: Theme.radiusField
    color: Theme.field
    border.color: Theme.outline
    border.width: 1

    function choose(index: int) {
        if (index < 0 || index >= choices.length)
            return
        buttons.itemAt(index).forceActiveFocus(Qt.TabFocusReason)
        if (index !== current)
            chosen(index)
    }

    Row {
        id: row
        x: 3
        y: 3

        Repeater {
            id: buttons
            model: segments.choices

            T.AbstractButton {
                id: choice

                required property int index
                required property string modelData

                text: modelData
                checked: segments.current === index
                implicitWidth: label.implicitWidth + 26
                implicitHeight: 30
                focusPolicy: checked || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
                hoverEnabled: true
                Accessible.role: Accessible.RadioButton
                Accessible.name: text
                Accessible.checkable: true
                Accessible.checked: checked
                onClicked: segments.choose(index)
                Keys.onLeftPressed: segments.choose(index - 1)
                Keys.onRightPressed: segments.choose(index + 1)
                Keys.onReturnPressed: segments.choose(index)

                contentItem: Label {
                    id: label
                    text: choice.text
                    size: 12
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    weight: choice.checked ? Font.DemiBold : Font.Normal
                    color: choice.checked ? Theme.ink : Theme.secondary
                    Accessible.ignored: true
                }

                background: Rectangle {
                    radius: 7
                    color: choice.checked ? Theme.card : choice.hovered ? Theme.hoverRow : "transparent"
                    border.width: choice.checked ? 1 : 0
                    border.color: Theme.outline
                }

                FocusRing { controlRadius: 7 }
            }
        }
    }
}
