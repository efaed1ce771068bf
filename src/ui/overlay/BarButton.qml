import QtQuick

/// A round button of the bar. It acts on the mouse alone: the bar never has the keyboard.
Rectangle {
    id: button

    required property string name
    readonly property alias hovered: area.containsMouse
    readonly property alias pressed: area.pressed

    signal clicked()

    radius: width / 2
    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.onPressAction: clicked()

    MouseArea {
        id: area
        anchors.fill: parent
        anchors.margins: Math.min(0, (button.width - 24) / 2) // targets are 24 wide
        hoverEnabled: true
        onClicked: button.clicked()
    }
}
