import QtQuick
import QtQuick.Templates as T
import Velmo.Controls
import Velmo.Models

/// For a few seconds, the way back from a deletion.
T.Control {
    id: toast

    required property UndoOffer offer

    implicitWidth: row.implicitWidth + 28
    implicitHeight: 44
    visible: offer.isOffered || opacity > 0
    opacity: offer.isOffered ? 1 : 0
    hoverEnabled: true
    Accessible.role: Accessible.AlertMessage
    Accessible.name: offer.text

    onHoveredChanged: offer.hold(hovered || button.activeFocus)

    Behavior on opacity {
        NumberAnimation { duration: Theme.hoverTime }
    }

    background: Rectangle {
        radius: Theme.radiusField
        color: Theme.card
        border.color: Qt.tint(color, Theme.outline)
        border.width: 1

        SoftShadow {
            z: -1
            anchors.fill: parent
            radius: parent.radius
            level: SoftShadow.Level.Menu
        }
    }

    Row {
        id: row
        x: 16
        height: parent.height
        spacing: 12

        Label {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, toast.parent.width - 180)
            text: toast.offer.text
            elide: Text.ElideMiddle
            maximumLineCount: 1
        }

        SecondaryButton {
            id: button
            anchors.verticalCenter: parent.verticalCenter
            small: true
            text: qsTr("Undo")
            onClicked: toast.offer.undo()
            onActiveFocusChanged: toast.offer.hold(activeFocus || toast.hovered)
        }
    }
}
