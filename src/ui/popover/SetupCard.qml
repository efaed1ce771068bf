import QtQuick
import QtQuick.Templates as T
import Velmo.Controls
import Velmo.Models

/// What dictation still needs. The whole row is the button that tells how to get it.
Rectangle {
    id: card

    required property MenuBarView view

    implicitHeight: row.y + row.height + 7
    radius: Theme.radiusField
    color: Theme.faded(Theme.orange, 0.06)
    border.width: 1
    border.color: Theme.orange

    Row {
        id: heading
        x: 15
        y: 14
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "checklist"
            pointSize: 12
            weight: Symbol.Semibold
            color: Theme.orangeText
        }

        Label {
            text: qsTr("Setup Required")
            size: 12
            weight: Font.DemiBold
            color: Theme.orangeText
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
    }

    T.Button {
        id: row
        x: 7
        anchors.top: heading.bottom
        anchors.topMargin: 7
        width: parent.width - 14
        height: words.implicitHeight + 14
        text: qsTr("Accessibility Permission")
        hoverEnabled: true
        focusPolicy: Qt.StrongFocus
        Accessible.name: text
        Accessible.description: card.view.setupHint
        onClicked: card.view.showPermission()
        Keys.onReturnPressed: row.clicked()
        Keys.onEnterPressed: row.clicked()

        background: Rectangle {
            radius: Theme.radiusRow
            color: row.down || row.hovered ? Theme.faded(Theme.orange, row.down ? 0.16 : 0.1) : "transparent"
        }

        Symbol {
            id: mark
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            name: card.view.hasAccessibility ? "checkmark.circle.fill" : "circle"
            pointSize: 15
            weight: Symbol.Medium
            color: card.view.hasAccessibility ? Theme.success : Theme.orange
        }

        Column {
            id: words
            anchors.left: mark.right
            anchors.leftMargin: 10
            anchors.right: arrow.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            spacing: 1

            Label {
                text: row.text
                weight: Font.Medium
            }

            Label {
                width: parent.width
                text: card.view.setupHint
                size: 11
                color: Theme.secondary
                wrapMode: Text.Wrap
            }
        }

        Symbol {
            id: arrow
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            name: "arrow.up.forward"
            pointSize: 12
            color: Theme.secondary
        }

        FocusRing { controlRadius: Theme.radiusRow }
    }
}
