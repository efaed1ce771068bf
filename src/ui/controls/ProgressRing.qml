import QtQuick
import Velmo.Controls

/// Something takes a while. Stands where a symbol stood, at the same size. Turns only while it can be seen.
ProgressArc {
    id: ring

    property int size: 16

    implicitWidth: size
    implicitHeight: size
    color: Theme.secondary

    NumberAnimation on turn {
        running: ring.visible && !Theme.reducedMotion
        from: 0
        to: 1
        duration: Theme.ringTime
        loops: Animation.Infinite
    }

    Timer {
        running: ring.visible && Theme.reducedMotion
        interval: Theme.ringTime / 4
        repeat: true
        onTriggered: ring.turn = (ring.turn + 0.25) % 1
    }
}
