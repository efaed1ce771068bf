import QtQuick
import Velmo.Controls
import Velmo.Models

/// The bar at rest: a handle that stays where it is, and above it now and then a tip. A click starts a dictation.
Item {
    id: content

    required property FloatingBar bar
    required property bool composited

    readonly property bool hovered: area.containsMouse && enabled
    readonly property bool _hasMessage: bar.message.length > 0
    readonly property bool _isTipShown: enabled && (hovered || _hasMessage)

    readonly property var inputAreas: _isTipShown ? [areaOf(grip), areaOf(tip)] : [areaOf(grip)]
    readonly property var solidAreas: _isTipShown ? [areaOf(ring), areaOf(tip)] : [areaOf(ring)]
    readonly property real solidRadius: 16

    function areaOf(item: Item): rect {
        return Qt.rect(item.x, item.y, item.width, item.height)
    }

    MouseArea {
        id: area
        x: Math.min(grip.x, content._isTipShown ? tip.x : grip.x)
        y: content._isTipShown ? tip.y : grip.y
        width: content._isTipShown ? Math.max(grip.width, tip.width) : grip.width
        height: grip.y + grip.height - y
        hoverEnabled: true
        onClicked: content.bar.startRecording()
    }

    /// What is easy to hit around the handle.
    Item {
        id: grip
        x: Math.round((content.width - width) / 2)
        y: ring.y + (ring.height - height) / 2
        width: 72
        height: 24
        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Start dictation")
        Accessible.onPressAction: content.bar.startRecording()
    }

    /// Without it the handle would vanish on a dark desktop.
    Rectangle {
        id: ring
        x: handle.x - 1
        y: handle.y - 1
        width: handle.width + 2
        height: handle.height + 2
        radius: height / 2
        color: Theme.lightAt(0.34)
    }

    SoftShadow {
        visible: content.composited
        anchors.fill: handle
        radius: handle.radius
        level: SoftShadow.Level.Handle
    }

    Rectangle {
        id: handle
        x: Math.round((content.width - width) / 2)
        y: content.height - height - 4
        width: 48
        height: 6
        radius: 3
        color: Theme.handle
    }

    /// Made when there is something to say, and kept.
    Loader {
        id: tip

        Binding {
            when: content._isTipShown
            restoreMode: Binding.RestoreNone
            tip.active: true
        }
        active: false
        sourceComponent: BarTip {
            id: words

            // qmllint disable unqualified
            /// What is said last stays while the tip fades.
            Binding {
                when: content._isTipShown
                restoreMode: Binding.RestoreNone
                words.text: content._hasMessage ? content.bar.message
                        : qsTr("Click or hold %1 to start dictating").arg("<b>" + content.bar.triggerKeyName + "</b>")
                words.isStyled: !content._hasMessage
                words.isWarning: content._hasMessage && content.bar.isWarning
            }

            composited: content.composited
            radius: content.solidRadius
            // qmllint enable unqualified
        }
        x: Math.round((content.width - width) / 2)
        y: handle.y - 8 - height
        opacity: content._isTipShown ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            enabled: content.composited
            NumberAnimation { duration: Theme.tipTime; easing.type: Easing.InOutQuad }
        }
    }
}
