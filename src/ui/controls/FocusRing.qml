import QtQuick

/// The ring around the control that has the keyboard; two pixels wide, two outside of it.
Rectangle {
    /// Of the control it lies around.
    property real controlRadius: Theme.radiusField

    anchors.fill: parent
    anchors.margins: -4
    color: "transparent"
    border.color: Theme.accent
    border.width: 2
    radius: controlRadius + 4
    visible: parent?.visualFocus ?? false
}
