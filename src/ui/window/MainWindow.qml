import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// The main window's contents: the sidebar and the selected page. A page is made when it is first selected and kept
/// from then on, so coming back finds it as it was.
Item {
    id: window

    required property QtObject view
    required property QtObject undoOffer
    required property QtObject home
    required property QtObject dictionary
    required property QtObject snippets
    required property QtObject mode
    required property QtObject account
    required property QtObject settings

    /// In the order of the sidebar.
    readonly property list<Component> _pages: [
        Component { HomePage { view: window.home } },
        Component { DictionaryPage { view: window.dictionary } },
        Component { SnippetsPage { view: window.snippets } },
        Component { ModePage { view: window.mode } },
        Component { NotesPage {} },
        Component { AccountPage { view: window.account } },
        Component { SettingsPage { view: window.settings } }
    ]

    Sidebar {
        id: sidebar
        width: 180
        height: parent.height
        view: window.view
    }

    Repeater {
        id: pages
        model: window._pages

        Loader {
            required property int index
            required property Component modelData
            readonly property bool selected: window.view.selectedPage === index

            x: sidebar.width
            width: window.width - x
            height: window.height
            visible: selected
            active: false
            focus: selected
            sourceComponent: modelData
            onSelectedChanged: active = active || selected
            onLoaded: {
                if (item instanceof Page)
                    item.coveredBelow = Qt.binding(() => undoToast.coveredBelow)
            }
            Component.onCompleted: active = selected
        }
    }

    Repeater {
        model: window._pages.length

        Item {
            required property int index

            Shortcut {
                sequence: "Ctrl+%1".arg(index + 1)
                enabled: !(window.T.Overlay.overlay?.visible ?? false)
                onActivated: {
                    window.view.selectedPage = index
                    pages.itemAt(index).item.forceActiveFocus(Qt.ShortcutFocusReason)
                }
            }
        }
    }

    Shortcut {
        sequences: [StandardKey.Undo]
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
