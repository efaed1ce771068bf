import QtQuick
import Velmo.Controls

/// The number of a step, or the check mark of one that is done.
Item {
    id: badge

    required property int number
    required property bool done
    required property bool current

    implicitWidth: 28
    implicitHeight: 28

    Rectangle {
        visible: !badge.done
        anchors.fill: parent
        radius: 14
        color: badge.current ? Theme.accent : "transparent"
        border.width: badge.current ? 0 : 1.5
        border.color: Theme.inkAt(0.28)

        Label {
            anchors.centerIn: parent
            text: badge.number
            Accessible.ignored: true
            weight: Font.DemiBold
            color: badge.current ? Theme.onFill : Theme.secondary
        }
    }

    Symbol {
        visible: badge.done
        anchors.centerIn: parent
        name: "checkmark.circle.fill"
        pointSize: 22
        color: Theme.success
    }
}
