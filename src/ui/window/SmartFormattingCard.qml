import QtQuick
import QtQuick.Layouts
import Velmo.Controls
import Velmo.Models

/// The switch that sends texts to the selected mode at all, and what that means.
Card {
    id: card

    required property ModeView mode

    padding: 0
    implicitHeight: row.implicitHeight + 30

    RowLayout {
        id: row
        x: 16
        y: 14
        width: parent.width - 32
        spacing: 16

        Column {
            Layout.fillWidth: true

            Label {
                width: parent.width
                text: qsTr("Smart Formatting")
                size: 14
                weight: Font.Medium
            }

            Label {
                width: parent.width
                wrapMode: Text.Wrap
                text: qsTr("Use AI to process text with the selected mode")
                size: 12
                color: Theme.secondary
            }
        }

        Row {
            spacing: 6

            Symbol {
                visible: card.mode.isProcessing
                anchors.verticalCenter: parent.verticalCenter
                name: "sparkles"
                pointSize: 12
                color: Theme.accent
            }

            Label {
                text: card.mode.caption
                size: 12
                weight: Font.Medium
                color: card.mode.isProcessing ? Theme.accent : Theme.secondary
            }
        }

        Toggle {
            text: qsTr("Smart Formatting")
            checked: card.mode.smartFormatting
            Accessible.description: card.mode.caption
            onToggled: card.mode.smartFormatting = checked
        }
    }
}
