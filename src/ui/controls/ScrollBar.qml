import QtQuick
import QtQuick.Templates as T

/// Shown while the content is taller than the view.
T.ScrollBar {
    id: bar

    implicitWidth: 14
    implicitHeight: 14
    padding: 4
    visible: size < 1
    minimumSize: 0.08
    focusPolicy: Qt.NoFocus

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed || bar.hovered ? Theme.inkAt(0.36) : Theme.scrollBar
    }
}
