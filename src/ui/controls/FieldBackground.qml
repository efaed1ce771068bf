import QtQuick

/// What a text field lies on; its outline says whether it is hovered or written in.
Rectangle {
    required property Item control
    property bool flat: false

    radius: Theme.radiusField
    color: control.activeFocus ? Theme.card : flat ? Theme.card : Theme.field
    border.width: control.activeFocus ? 2 : 1
    border.color: control.activeFocus ? Theme.accent : control.hovered ? Theme.outlineHover : Theme.outline
}
