import QtQuick

/// The ring around the control that has the keyboard; two pixels wide, two outside of it. It is there again when the
/// person comes back from another window.
Rectangle {
    id: ring

    property bool _byKeyboard: false

    /// Of the control it lies around.
    property real controlRadius: Theme.radiusField

    anchors.fill: parent
    anchors.margins: -4
    color: "transparent"
    border.color: Theme.accent
    border.width: 2
    radius: controlRadius + 4
    visible: _byKeyboard && (parent?.activeFocus ?? false)

    function noteReason() {
        const reason = parent.focusReason
        if (reason !== Qt.ActiveWindowFocusReason)
            _byKeyboard = [Qt.TabFocusReason, Qt.BacktabFocusReason, Qt.ShortcutFocusReason].includes(reason)
    }

    Component.onCompleted: noteReason() // the control may have been given the keyboard before

    Connections {
        target: ring.parent

        function onFocusReasonChanged() {
            ring.noteReason()
        }
    }
}
