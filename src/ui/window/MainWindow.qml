import QtQuick
import Velmo.Controls
import Velmo.Models

/// The main window's contents: the sidebar and the selected page.
Rectangle {
    id: window

    required property MainWindowView view
    required property UndoOffer undoOffer
    required property HomeView home
    required property DictionaryView dictionary
    required property SnippetsView snippets
    required property ModeView mode
    required property AccountView account
    required property SettingsView settings
    required property SpeechView speech

    color: Theme.window

    Sidebar {
        id: sidebar
        width: 180
        height: parent.height
        view: window.view
    }

    Item {
        x: sidebar.width
        width: window.width - x
        height: window.height

        PageFrame {
            page: MainWindowView.Home
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: HomePage { view: window.home } // qmllint disable unqualified
        }

        PageFrame {
            page: MainWindowView.Dictionary
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: DictionaryPage { view: window.dictionary } // qmllint disable unqualified
        }

        PageFrame {
            page: MainWindowView.Snippets
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: SnippetsPage { view: window.snippets } // qmllint disable unqualified
        }

        PageFrame {
            page: MainWindowView.Mode
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: ModePage {
                // qmllint disable unqualified
                view: window.mode
                onLanguageModelWanted: window.view.selectedPage = MainWindowView.Speech
                // qmllint enable unqualified
            }
        }

        PageFrame {
            page: MainWindowView.Notes
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: NotesPage {}
        }

        PageFrame {
            page: MainWindowView.Account
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: AccountPage { view: window.account } // qmllint disable unqualified
        }

        PageFrame {
            page: MainWindowView.Settings
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: SettingsPage { view: window.settings } // qmllint disable unqualified
        }

        PageFrame {
            page: MainWindowView.Speech
            view: window.view
            coveredBelow: undoToast.coveredBelow
            sourceComponent: SpeechPage { view: window.speech } // qmllint disable unqualified
        }
    }

    Shortcut {
        sequences: [StandardKey.Undo] // qmllint disable unqualified
        enabled: window.undoOffer.isOffered
        onActivated: window.undoOffer.undo()
    }

    UndoToast {
        id: undoToast
        readonly property real coveredBelow: offer.isOffered ? height + 32 : 0

        offer: window.undoOffer
        x: sidebar.width + (window.width - sidebar.width - width) / 2
        y: window.height - height - 20
    }

    Alert {
        title: qsTr("Velmo keeps running")
        message: qsTr("Start Velmo again to open this window, or run “velmo quit” to end it.")
        visible: window.view.showClosingNotice
        onClosed: window.view.dismissClosingNotice()
    }
}
