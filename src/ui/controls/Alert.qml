import QtQuick

/// A sentence that wants to be read before anything else goes on.
ModalPanel {
    id: alert

    property string message
    property string buttonText: qsTr("OK")

    width: Math.min(340, (parent?.width ?? 340) - 32)
    fill: Theme.card
    scrimOpacity: 0.14
    onOpened: button.forceActiveFocus(Qt.TabFocusReason)

    contentItem: Column {
        spacing: 16
        Accessible.role: Accessible.AlertMessage
        Accessible.name: alert.title + ". " + alert.message

        Column {
            width: parent.width
            spacing: 6

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: alert.title
                size: 14
                weight: Font.DemiBold
            }

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: alert.message
                fixedLineHeight: 20
                color: Theme.secondary
            }
        }

        PrimaryButton {
            id: button
            width: parent.width
            text: alert.buttonText
            onClicked: alert.close()
        }
    }
}
