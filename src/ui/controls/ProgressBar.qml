import QtQuick

/// How much of something is there.
Rectangle {
    id: bar

    property real value: 0 ///< 0 to 1.

    implicitWidth: 200
    implicitHeight: 4
    radius: 2
    color: Theme.inkAt(0.08)
    Accessible.role: Accessible.ProgressBar

    Rectangle {
        width: Math.max(height, bar.width * Math.min(1, bar.value))
        height: parent.height
        radius: bar.radius
        color: Theme.accent
    }
}
