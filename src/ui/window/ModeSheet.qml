import QtQuick
import Velmo.Controls
import Velmo.Models

/// The form of a custom mode. It is open while there is something to edit.
Sheet {
    id: form

    property ModeEditorSheet sheet: null
    property ModeEditorSheet _shown: null ///< What is edited; kept until the sheet has faded away.

    title: _shown?.title ?? ""
    confirmText: _shown?.confirmText ?? ""
    canConfirm: _shown?.canConfirm ?? false
    onConfirmed: _shown.confirm()
    onAboutToHide: if (sheet) sheet.cancel()
    onSheetChanged: sheet ? begin() : close()

    function begin() {
        _shown = sheet
        name.text = sheet.name
        prompt.text = sheet.prompt
        open()
        name.forceActiveFocus(Qt.TabFocusReason)
    }

    FormField {
        width: parent.width
        label: qsTr("Name")

        TextField {
            id: name
            width: parent.width
            placeholderText: qsTr("e.g. Email Writer")
            Accessible.name: qsTr("Name")
            onTextEdited: form._shown.name = text
            onAccepted: form._shown.confirm()
        }
    }

    FormField {
        width: parent.width
        label: qsTr("Prompt")

        TextArea {
            id: prompt
            width: parent.width
            height: 112
            placeholderText: qsTr("Describe how the AI should process your dictated text.")
            accessibleName: qsTr("Prompt")
            onEdited: if (form._shown) form._shown.prompt = text
        }
    }

    FormField {
        width: parent.width
        label: qsTr("Icon")

        IconChoices {
            width: parent.width
            names: form._shown?.iconChoices ?? []
            current: form._shown?.icon ?? ""
            onChosen: name => form._shown.icon = name
        }
    }
}
