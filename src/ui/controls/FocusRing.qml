import QtQuick
import QtQuick.Templates as T

/// The ring around the control that has the keyboard; two pixels wide, two outside of it. It is there again when the
/// person comes back from another window.
Rectangle {
    id: ring

    property bool _byKeyboard: false
    readonly property T.Control _control: parent as T.Control

    /// Of the control it lies around.
    property real controlRadius: Theme.radiusField

    anchors.fill: parent
    anchors.margins: -4
    color: "transparent"
    border.color: Theme.accent
    border.width: 2
    radius: controlRadius + 4
    visible: _byKeyboard && (_control?.activeFocus ?? false)

    function noteReason() {
        const reason = _control.focusReason
        if (reason !== Qt.ActiveWindowFocusReason)
            _byKeyboard = reason === Qt.TabFocusReason || reason === Qt.BacktabFocusReason || reason === Qt.ShortcutFocusReason
    }

    Component.onCompleted: noteReason() // the control may have been given the keyboard before

    Connections {
        target: ring._control

        function onFocusReasonChanged() {
            ring.noteReason()
        }
    }
}
