import QtQuick
import QtQuick.Window
import Velmo.Models
import Velmo.Speech

/// What recognises speech, what it understands, and a field to try it in.
Page {
    id: page

    required property SpeechView view

    title: qsTr("Speech")

    Binding {
        target: page.view
        property: "isShown"
        value: page.visible && page.Window.visibility !== Window.Hidden && page.Window.visibility !== Window.Minimized
    }

    ServiceSection {
        width: parent.width
        speech: page.view
    }

    SettingsSection {
        width: parent.width
        symbolName: "mic"
        title: qsTr("Try It")
        cardPadding: 16

        TryField {
            width: parent.width
            trial: page.view.trial
        }
    }

    ModelsSection {
        width: parent.width
        visible: page.view.hasModels
        speech: page.view
    }

    LanguageModelSection {
        width: parent.width
        visible: page.view.hasLanguageModels
        speech: page.view
    }
}
