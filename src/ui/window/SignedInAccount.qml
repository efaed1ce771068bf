import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Velmo.Controls
import Velmo.Models

/// The person, the synchronisation, and the way out.
Column {
    id: signedIn

    required property AccountView account

    spacing: 16

    Card {
        width: parent.width
        padding: 0
        implicitHeight: 78

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 15
            anchors.rightMargin: 16
            spacing: 16

            Symbol {
                name: "person.circle"
                pointSize: 36
                color: Theme.accent
            }

            Column {
                Layout.fillWidth: true
                spacing: 2

                SelectableText {
                    width: parent.width
                    text: signedIn.account.userName
                    size: 16
                    weight: Font.DemiBold
                    Accessible.name: qsTr("Signed in as %1").arg(text)
                }

                SelectableText {
                    width: parent.width
                    visible: text.length > 0
                    text: signedIn.account.userEmail
                    color: Theme.secondary
                }
            }
        }
    }

    Card {
        width: parent.width
        padding: 0
        implicitHeight: 106

        Row {
            x: 16
            y: 13
            spacing: 8

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "arrow.triangle.2.circlepath"
                pointSize: 13
                color: Theme.accent
            }

            Label {
                text: qsTr("Sync")
                weight: Font.DemiBold
                Accessible.role: Accessible.Heading
            }
        }

        Divider {
            x: 16
            y: 42
            width: parent.width - 32
        }

        RowLayout {
            x: 16
            y: 55
            width: parent.width - 32
            spacing: 16

            Column {
                Layout.fillWidth: true

                Label {
                    width: parent.width
                    text: qsTr("Dictionary & Snippets")
                    size: 14
                    weight: Font.Medium
                }

                Label {
                    width: parent.width
                    wrapMode: Text.Wrap
                    text: signedIn.account.syncStatus
                    size: 12
                    color: Theme.secondary
                }
            }

            SecondaryButton {
                small: true
                symbolName: "arrow.clockwise"
                text: qsTr("Sync Now")
                busy: signedIn.account.isSyncing
                Accessible.description: busy ? qsTr("Synchronising") : ""
                onClicked: signedIn.account.syncNow()
            }
        }
    }

    Warning {
        visible: text.length > 0
        x: 4
        maximumWidth: parent.width - 8
        text: signedIn.account.keyringMessage
    }

    T.Button {
        id: signOut

        width: parent.width
        implicitHeight: 50
        text: qsTr("Sign Out")
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        Accessible.name: text
        onClicked: signedIn.account.signOut()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()

        background: Rectangle {
            radius: Theme.radiusCard
            color: signOut.down ? Theme.rowHover : signOut.hovered ? Theme.field : Theme.card
            border.color: Theme.cardHairline
            border.width: 1
        }

        contentItem: Row {
            leftPadding: 16
            spacing: 8
            opacity: 0.8

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "rectangle.portrait.and.arrow.right"
                pointSize: 13
                color: Theme.red
            }

            Label {
                anchors.verticalCenter: parent.verticalCenter
                Accessible.ignored: true
                text: signOut.text
                size: 14
                weight: Font.Medium
                color: Theme.red
            }
        }

        FocusRing { controlRadius: Theme.radiusCard }
    }
}
