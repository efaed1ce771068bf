import QtQuick
import Velmo.Controls
import Velmo.Floating
import Velmo.Models
import Velmo.Overlay

/// The floating bar: a handle at rest, with a tip above it while the pointer is there or something has to be said; a
/// bar while somebody dictates. Fills a window of fixed size at the foot of the screen, most of which is clear.
FloatingContent {
    id: view

    required property FloatingBar bar
    /// The panel, of which the window shows more: its size at rest and while active, and what lies below it.
    required property size idleSize
    required property size activeSize
    required property real bottomMargin

    readonly property bool isHovering: idle.hovered
    readonly property bool swings: composited && !Theme.reducedMotion

    inputAreas: bar.isIdle ? idle.inputAreas : [areaOf(active)]
    solidAreas: bar.isIdle ? idle.solidAreas : words.visible ? [areaOf(active), areaOf(words)] : [areaOf(active)]
    solidRadius: bar.isIdle ? idle.solidRadius : active.height / 2

    function areaOf(item: Item): rect {
        return Qt.rect(item.x, item.y, item.width, item.height)
    }

    Spring {
        id: presence // of the bar; what of it is missing is the handle's
        readonly property real shown: Math.min(1, Math.max(0, value))

        // A response of 0.4 s at three quarters of the critical damping.
        stiffness: 246.7
        damping: 23.6
        swings: view.swings
        target: view.bar.isIdle ? 0 : 1
    }

    IdleContent {
        id: idle
        bar: view.bar
        composited: view.composited
        width: view.width
        height: view.height - view.bottomMargin
        transformOrigin: Item.Bottom
        opacity: 1 - presence.shown
        scale: 1 - 0.5 * presence.value
        visible: opacity > 0
        enabled: view.bar.isIdle
    }

    LiveWords {
        id: words
        composited: view.composited
        visible: !view.bar.isIdle && text.length > 0
        text: view.bar.liveText.replace(/\s+/g, " ")
        width: implicitWidth
        height: implicitHeight
        x: Math.round((view.width - width) / 2)
        y: active.y - height - 4
        opacity: presence.shown
    }

    /// Made for the first dictation, and kept: at rest it would be memory for nothing.
    Loader {
        id: active

        property real panelHeight: (view.bar.isIdle ? view.idleSize : view.activeSize).height

        Behavior on panelHeight {
            enabled: view.swings
            NumberAnimation { duration: 350; easing.type: Easing.InOutQuad }
        }

        Binding {
            when: !view.bar.isIdle
            restoreMode: Binding.RestoreNone
            active.active: true
        }
        active: false
        sourceComponent: ActiveBar {
            // qmllint disable unqualified
            bar: view.bar
            composited: view.composited
            swings: view.swings
            // qmllint enable unqualified
        }
        width: view.activeSize.width - 32
        height: view.activeSize.height - 16
        x: (view.width - width) / 2
        y: view.height - view.bottomMargin - (panelHeight + height) / 2
        opacity: presence.shown
        scale: 0.8 + 0.2 * presence.value
        visible: opacity > 0
        enabled: !view.bar.isIdle
    }
}
