import QtQuick
import Velmo.Controls

/// The last of what has been heard so far, in one quiet line above the bar. It may still change, so nobody can click it or copy
/// from it, and a screen reader leaves it alone.
Rectangle {
    id: words

    required property bool composited
    property alias text: label.text

    implicitWidth: Math.min(360, measure.implicitWidth + 32)
    implicitHeight: label.implicitHeight + 8
    radius: height / 2
    color: composited ? Theme.capsule : Theme.capsuleOpaque

    CapsuleOutline { radius: words.radius }

    Label {
        id: label
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        width: words.width - 32
        size: 12
        elide: Text.ElideLeft
        maximumLineCount: 1
        color: Theme.lightAt(0.7)
        Accessible.ignored: true
    }

    /// The width of all of it.
    Label {
        id: measure
        visible: false
        text: label.text
        size: label.size
    }
}
