import QtQuick
import Velmo.Controls

/// A sentence above the handle, as narrow as it can be and on two lines at most.
Rectangle {
    id: tip

    required property bool composited
    property alias text: label.text
    property bool isStyled: false // <b>…</b> stands out
    property bool isWarning: false

    readonly property int _symbolWidth: isWarning ? symbol.implicitWidth + 8 : 0

    implicitWidth: Math.min(328, measure.implicitWidth + 32 + _symbolWidth)
    implicitHeight: label.implicitHeight + 16
    color: composited ? Theme.capsule : Theme.capsuleOpaque
    Accessible.role: Accessible.Notification
    Accessible.name: text.replace(/<\/?b>/g, "")

    SoftShadow {
        z: -1
        visible: tip.composited
        anchors.fill: parent
        radius: tip.radius
        level: SoftShadow.Level.Overlay
    }

    CapsuleOutline { radius: tip.radius }

    Symbol {
        id: symbol
        visible: tip.isWarning
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        name: "exclamationmark.triangle"
        pointSize: 13
        color: Theme.warningOnDark
    }

    Label {
        id: label
        x: 16 + tip._symbolWidth
        y: 8
        width: tip.implicitWidth - 32 - tip._symbolWidth
        size: 12
        textFormat: tip.isStyled ? Text.StyledText : Text.PlainText
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        color: Theme.lightAt(0.9)
        Accessible.ignored: true
    }

    /// The width the sentence takes on one line.
    Label {
        id: measure
        visible: false
        text: label.text
        size: label.size
        textFormat: label.textFormat
    }
}
