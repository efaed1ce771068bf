import QtQuick

/// A small form over its page, with its buttons at the lower right, the confirming one last. Escape cancels.
ModalPanel {
    id: sheet

    property string confirmText
    property bool canConfirm: true
    default property alias fields: form.data

    signal confirmed()
    signal cancelled()

    width: Math.min(400, (parent?.width ?? 400) - 32)
    onClosed: cancelled()

    contentItem: Column {
        spacing: 16

        // Return alone is a line break in a text area.
        Shortcut {
            sequences: ["Ctrl+Return", "Ctrl+Enter"]
            enabled: sheet.opened && sheet.canConfirm
            onActivated: sheet.confirmed()
        }

        Label {
            text: sheet.title
            size: 16
            weight: Font.DemiBold
        }

        Column {
            id: form
            width: parent.width
            spacing: 16
        }

        Row {
            anchors.right: parent.right
            topPadding: 4
            spacing: 8

            SecondaryButton {
                text: qsTr("Cancel")
                onClicked: sheet.close()
            }

            PrimaryButton {
                text: sheet.confirmText
                enabled: sheet.canConfirm
                onClicked: sheet.confirmed()
            }
        }
    }
}
