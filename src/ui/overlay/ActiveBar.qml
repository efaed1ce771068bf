pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Models
import Velmo.Overlay

/// What is shown while somebody dictates: who gets the text, the voice, and the ways to end.
Rectangle {
    id: capsule

    required property FloatingBar bar
    required property bool composited
    required property bool swings

    implicitWidth: 360
    implicitHeight: 44
    radius: height / 2
    color: composited ? Theme.capsule : Theme.capsuleOpaque

    SoftShadow {
        z: -1
        visible: capsule.composited
        anchors.fill: parent
        radius: capsule.radius
        level: SoftShadow.Level.Overlay
    }

    CapsuleOutline { radius: capsule.radius }

    Rectangle {
        id: initial
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        radius: 6
        color: Theme.lightAt(0.15)

        Label {
            anchors.centerIn: parent
            text: capsule.bar.initial
            size: 12
            weight: Font.Bold
            color: Theme.lightAt(0.9)
        }
    }

    BarButton {
        id: cancel
        anchors.left: initial.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 22
        height: 22
        enabled: !capsule.bar.isTranscribing
        opacity: enabled ? 1 : Theme.disabledOpacity
        name: qsTr("Cancel dictation")
        color: Theme.lightAt(pressed ? 0.24 : hovered ? 0.18 : 0.10)
        onClicked: capsule.bar.cancelRecording()

        Symbol {
            anchors.centerIn: parent
            name: "xmark"
            pointSize: 10
            weight: Symbol.Semibold
            color: Theme.lightAt(cancel.hovered ? 0.9 : 0.6)
        }
    }

    Row {
        x: Math.round((cancel.x + cancel.width + stop.x - width) / 2)
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Repeater {
            model: 10

            AudioDotView {
                level: capsule.bar.dotLevels[index]
                isTranscribing: capsule.bar.isTranscribing
                swings: capsule.swings
            }
        }
    }

    BarButton {
        id: stop
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        height: 28
        enabled: !capsule.bar.isTranscribing
        name: capsule.bar.isTranscribing ? qsTr("Transcribing") : qsTr("Stop dictation")
        color: pressed ? Qt.darker(Theme.stop, 1.2) : hovered && enabled ? Qt.lighter(Theme.stop, 1.08) : Theme.stop
        onClicked: capsule.bar.stopRecording()

        Rectangle {
            visible: !capsule.bar.isTranscribing
            anchors.centerIn: parent
            width: 10
            height: 10
            radius: 2
            color: Theme.onFill
        }

        ProgressRing {
            visible: capsule.bar.isTranscribing
            anchors.centerIn: parent
            size: 14
            color: Theme.onFill
        }
    }
}
