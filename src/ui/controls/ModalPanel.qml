pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// What sheets and alerts have in common: they lie in the middle over a scrim, keep the keyboard and give it back.
T.Popup {
    id: panel

    property color fill: Theme.window
    property real scrimOpacity: 0.32
    property string title
    property Item _giveBackTo: null
    property bool _hadRing: false

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    height: Math.min(implicitHeight, (parent?.height ?? implicitHeight) - 32)
    padding: 20
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onAboutToShow: {
        _giveBackTo = parent.Window.activeFocusItem
        _hadRing = (_giveBackTo as T.Control)?.visualFocus ?? false
    }
    onClosed: _giveBackTo?.forceActiveFocus(_hadRing ? Qt.TabFocusReason : Qt.MouseFocusReason)

    background: Rectangle {
        radius: Theme.radiusCard
        color: panel.fill
        border.color: Qt.tint(color, Theme.hairline)
        border.width: 1
        Accessible.role: Accessible.Dialog
        Accessible.name: panel.title

        SoftShadow {
            z: -1
            anchors.fill: parent
            radius: parent.radius
            level: SoftShadow.Level.Sheet
        }
    }

    T.Overlay.modal: Rectangle {
        color: Theme.inkAt(panel.scrimOpacity)

        Behavior on opacity {
            NumberAnimation { duration: Theme.sheetTime }
        }
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.sheetTime; easing.type: Easing.OutCubic }
        NumberAnimation { property: "scale"; from: 0.97; to: 1; duration: Theme.sheetTime; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; to: 0; duration: Theme.sheetTime; easing.type: Easing.OutCubic }
    }
}
