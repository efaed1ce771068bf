import QtQuick

/// A key of the keyboard as people see it.
Rectangle {
    id: cap

    property alias text: label.text
    property bool capturing: false
    property alias size: label.size
    property alias weight: label.weight
    readonly property real labelWidth: label.implicitWidth

    implicitWidth: label.implicitWidth + 2 * 12
    implicitHeight: 28
    radius: Theme.radiusSmall
    color: capturing ? Theme.accent : Theme.inkAt(0.20)

    Rectangle {
        width: parent.width
        height: parent.height - 2
        radius: Theme.radiusSmall
        color: cap.capturing ? Theme.tint : Theme.card
        border.width: 1
        border.color: cap.capturing ? Theme.accent : Theme.keyOutline

        Label {
            id: label
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 16)
            elide: Text.ElideRight
            size: 12
            weight: Font.Medium
            color: cap.capturing ? Theme.accent : Theme.ink
        }
    }
}
