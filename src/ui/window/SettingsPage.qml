import QtQuick
import Velmo.Models

/// Languages, dictation, what Velmo needs of the desktop, and what it is.
Page {
    id: page

    required property SettingsView view

    title: qsTr("Settings")
    Component.onCompleted: view.appear()
    onVisibleChanged: visible ? view.appear() : view.disappear()

    LanguageSection {
        width: parent.width
        settings: page.view
    }

    DictationSection {
        width: parent.width
        settings: page.view
    }

    PermissionSection {
        width: parent.width
        settings: page.view
    }

    AboutSection {
        width: parent.width
        settings: page.view
    }
}
