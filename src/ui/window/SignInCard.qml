import QtQuick
import Velmo.Controls
import Velmo.Models

/// The way to sign in, and what became of the last attempt.
Card {
    id: card

    required property AccountView account
    property int _focusReason: Qt.OtherFocusReason

    padding: 0
    implicitHeight: content.height + 69

    Column {
        id: content
        y: 36
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(380, parent.width - 32)

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "person.circle"
            pointSize: 48
            weight: Symbol.Light
            opacity: 0.4
        }

        Item {
            width: 1
            height: 8
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Not signed in")
            weight: Font.Medium
            color: Theme.secondary
        }

        Item {
            width: 1
            height: 21
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Sign in to Velmo")
            size: 18
            weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }

        Item {
            width: 1
            height: 6
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: card.account.invitation
            size: 14
            color: Theme.secondary
        }

        Item {
            width: 1
            height: 20
        }

        PushButton {
            id: signIn
            anchors.horizontalCenter: parent.horizontalCenter
            implicitHeight: 44
            leftPadding: 19
            fill: Theme.signIn
            fillHover: Theme.signInHover
            fillPressed: Theme.signInPressed
            outline: "transparent"
            foreground: Theme.onFill
            textSize: 16
            symbolSize: 16
            spacing: 10
            symbolName: card.account.signInSymbol
            text: card.account.signInText
            enabled: !card.account.isSigningIn
            onClicked: {
                card._focusReason = visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason
                card.account.signIn()
            }
        }

        Row {
            visible: card.account.isSigningIn
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 12
            spacing: 12

            ProgressRing {
                anchors.verticalCenter: cancel.verticalCenter
                size: 14
            }

            Label {
                anchors.verticalCenter: cancel.verticalCenter
                text: qsTr("Waiting for the browser…")
                color: Theme.secondary
            }

            SecondaryButton {
                id: cancel

                small: true
                text: qsTr("Cancel")
                onClicked: card.account.cancelSignIn()
                onVisibleChanged: {
                    if (visible)
                        forceActiveFocus(card._focusReason)
                    else if (activeFocus && card.visible)
                        Qt.callLater(signIn.forceActiveFocus, card._focusReason) // once it is enabled again
                }
                Keys.onEscapePressed: clicked()
            }
        }

        Warning {
            visible: text.length > 0 && !card.account.isSigningIn
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 14
            maximumWidth: parent.width
            text: card.account.errorMessage
        }

        Warning {
            visible: text.length > 0
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 14
            maximumWidth: parent.width
            text: card.account.keyringMessage
        }
    }
}
