import QtQuick
import Velmo.Controls
import Velmo.Floating
import Velmo.Models

/// The popover of the status item: what Velmo does now, and the recent texts.
FloatingContent {
    id: popover

    required property MenuBarView view
    /// Around the panel, for its shadow.
    required property real margin

    inputAreas: [Qt.rect(panel.x, panel.y, panel.width, panel.height)]
    solidAreas: inputAreas
    solidRadius: panel.radius

    focus: true
    Keys.onEscapePressed: closeRequested()

    SoftShadow {
        visible: popover.composited
        anchors.fill: panel
        radius: panel.radius
        level: SoftShadow.Level.Popover
    }

    Rectangle {
        id: panel
        x: popover.margin
        y: popover.margin
        width: popover.width - 2 * popover.margin
        height: popover.height - 2 * popover.margin
        radius: Theme.radiusCard
        color: Theme.window
        border.width: 1
        border.color: Qt.tint(color, Theme.outline) // an outline lies on what is beneath the panel
        Accessible.role: Accessible.Pane
        Accessible.name: qsTr("Velmo")

        Column {
            id: top
            x: 16
            y: 16
            width: parent.width - 32
            spacing: 12

            Row {
                spacing: 8

                Symbol {
                    name: "waveform.circle.fill"
                    pointSize: 20
                    color: Theme.accent
                }

                Label {
                    text: qsTr("Velmo")
                    size: 18
                    weight: Font.Bold
                }
            }

            SetupCard {
                visible: popover.view.isSetupRequired
                width: parent.width
                view: popover.view
            }

            StatusCard {
                width: parent.width
                view: popover.view
            }

            Divider { width: parent.width }

            Row {
                spacing: 8

                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Recent")
                    size: 12
                    weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }

                Badge {
                    text: popover.view.entryCount
                    size: 11
                    horizontalPadding: 6
                }
            }
        }

        RecentList {
            anchors.left: top.left
            anchors.right: top.right
            anchors.top: top.bottom
            anchors.topMargin: 10
            anchors.bottom: footer.top
            anchors.bottomMargin: 12
            view: popover.view
        }

        Item {
            id: footer
            anchors.left: top.left
            anchors.right: top.right
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 12
            height: 24

            OpenButton {
                x: -8 // its words stand in line with the cards
                onClicked: popover.view.openVelmo()
            }

            SymbolButton {
                anchors.right: parent.right
                width: 24
                height: 24
                symbolName: "power"
                text: qsTr("Quit Velmo")
                onClicked: popover.view.quit()
            }
        }
    }
}
