import QtQuick

/// What a text field lies on; its outline says whether it is hovered or written in.
Rectangle {
    required property bool active ///< It is written in.
    required property bool hovered
    property bool flat: false

    radius: Theme.radiusField
    color: active ? Theme.card : flat ? Theme.card : Theme.field
    border.width: active ? 2 : 1
    border.color: active ? Theme.accent : hovered ? Theme.outlineHover : Theme.outline
}
