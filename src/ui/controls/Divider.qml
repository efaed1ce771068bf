import QtQuick
import QtQuick.Window

Rectangle {
    implicitWidth: 1
    implicitHeight: Theme.hairlineWidth(Screen.devicePixelRatio)
    color: Theme.hairline
}
