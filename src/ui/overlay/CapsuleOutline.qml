import QtQuick
import QtQuick.Window
import Velmo.Controls

/// What tells a dark capsule from a dark desktop.
Rectangle {
    anchors.fill: parent
    color: "transparent"
    border.width: Theme.hairlineWidth(Screen.devicePixelRatio)
    border.color: Theme.lightAt(0.08)
}
