import QtQuick
import Velmo.Controls
import Velmo.Overlay

/// One dot of the row that follows the voice; while the speech is processed a wave of light runs through the row.
Item {
    id: dot

    required property real level
    required property bool isTranscribing
    required property int index
    required property bool swings
    property real shimmerPhase: isTranscribing && Theme.reducedMotion ? 0.5 : 0
    property real minHeight: 4
    property real maxHeight: 20
    property real dotWidth: 4

    readonly property real _range: maxHeight - minHeight

    width: dotWidth
    height: maxHeight

    Spring {
        id: spring
        stiffness: 300
        damping: 15
        swings: dot.swings
        target: dot._range * (dot.isTranscribing ? 0.3 : dot.level)
    }

    SequentialAnimation {
        running: dot.isTranscribing && !Theme.reducedMotion
        onStopped: dot.shimmerPhase = 0

        PauseAnimation { duration: dot.index * 80 }
        SequentialAnimation {
            loops: Animation.Infinite
            NumberAnimation { target: dot; property: "shimmerPhase"; to: 1; duration: 600; easing.type: Easing.InOutQuad }
            NumberAnimation { target: dot; property: "shimmerPhase"; to: 0; duration: 600; easing.type: Easing.InOutQuad }
        }
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: dot.dotWidth
        height: Math.max(dot.minHeight, dot.minHeight + spring.value + 0.2 * dot._range * dot.shimmerPhase)
        radius: width / 2
        antialiasing: true
        color: Theme.onFill
        opacity: dot.isTranscribing ? 0.4 + 0.3 * dot.shimmerPhase : 0.4 + 0.5 * dot.level

        Behavior on opacity {
            enabled: dot.swings && !dot.isTranscribing
            NumberAnimation { duration: 300; easing.type: Easing.OutCubic }
        }
    }
}
