import QtQuick
import Velmo.Controls
import Velmo.Models

/// The sheet in which a snippet is written, and the alert about a trigger that is taken.
Sheet {
    id: sheet

    required property SnippetEditorSheet editor

    visible: editor !== null
    title: editor?.title ?? ""
    confirmText: qsTr("Save")
    canConfirm: editor?.canSave ?? false
    onConfirmed: editor.save()
    onCancelled: editor?.cancel()
    onOpened: {
        trigger.text = editor.trigger
        expansion.text = editor.expansion
        trigger.forceActiveFocus()
    }

    FormField {
        width: parent.width
        label: qsTr("When I say...")

        TextField {
            id: trigger
            width: parent.width
            placeholderText: qsTr("e.g. \"my email address\"")
            Accessible.name: qsTr("When I say...")
            onTextChanged: if (sheet.editor) sheet.editor.trigger = text
            onAccepted: expansion.input.forceActiveFocus(Qt.TabFocusReason)
        }
    }

    FormField {
        width: parent.width
        label: qsTr("Replace with...")

        TextArea {
            id: expansion
            width: parent.width
            accessibleName: qsTr("Replace with...")
            onEdited: if (sheet.editor) sheet.editor.expansion = text
        }
    }

    Alert {
        title: qsTr("Duplicate Trigger")
        message: sheet.editor?.duplicateMessage ?? ""
        visible: sheet.editor?.showDuplicateAlert ?? false
        onClosed: {
            sheet.editor?.dismissDuplicateAlert()
            trigger.forceActiveFocus()
            trigger.selectAll()
        }
    }
}
