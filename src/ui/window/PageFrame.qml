import QtQuick
import QtQuick.Templates as T
import Velmo.Models

/// The place of a page in the main window. The page is made when it is first selected and kept from then on, so coming
/// back finds it as it was.
Loader {
    id: frame

    required property MainWindowView view
    required property int page ///< A MainWindowView.SidebarPage.
    required property real coveredBelow ///< What a notice at the lower edge covers.
    readonly property bool selected: view.selectedPage === page

    anchors.fill: parent
    visible: selected
    active: false
    focus: selected
    onSelectedChanged: active = active || selected
    Component.onCompleted: active = selected
    onLoaded: {
        const shown = item as Page
        if (shown)
            shown.coveredBelow = Qt.binding(() => frame.coveredBelow)
    }

    Shortcut {
        sequence: "Ctrl+%1".arg(frame.page + 1)
        enabled: !(frame.T.Overlay.overlay?.visible ?? false)
        onActivated: {
            frame.view.selectedPage = frame.page
            const shown = frame.item as Item
            shown.forceActiveFocus(Qt.ShortcutFocusReason)
        }
    }
}
