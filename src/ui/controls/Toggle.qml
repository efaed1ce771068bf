import QtQuick
import QtQuick.Templates as T

/// A switch between off and on. `text` is its accessible name.
T.Switch {
    id: toggle

    implicitWidth: 36
    implicitHeight: 20
    opacity: enabled ? 1 : Theme.disabledOpacity
    focusPolicy: Qt.StrongFocus
    Accessible.name: text

    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()

    /// As Space does.
    function press() {
        toggle.toggle()
        toggled()
        clicked()
    }

    indicator: Rectangle {
        width: 36
        height: 20
        radius: 10
        color: toggle.checked ? Theme.accent : Theme.switchOff

        Rectangle {
            x: 2 + toggle.visualPosition * 16
            y: 2
            width: 16
            height: 16
            radius: 8
            color: Theme.onFill

            Behavior on x {
                enabled: !toggle.down
                NumberAnimation { duration: Theme.hoverTime }
            }
        }
    }

    FocusRing { controlRadius: 10 }
}
