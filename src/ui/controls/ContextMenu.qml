import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// A menu of actions on a row; opens inside the window. Fill it with MenuAction.
T.Menu {
    id: menu

    property Item _giveBackTo: null
    property bool _hadRing: false

    implicitWidth: 160
    implicitHeight: contentHeight + topPadding + bottomPadding
    contentHeight: contentItem.implicitHeight
    padding: 4
    margins: 8
    modal: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onAboutToShow: {
        _giveBackTo = parent.Window.activeFocusItem
        _hadRing = (_giveBackTo as T.Control)?.visualFocus ?? false
    }
    onClosed: _giveBackTo?.forceActiveFocus(_hadRing ? Qt.TabFocusReason : Qt.MouseFocusReason)

    delegate: MenuAction {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
        keyNavigationWraps: true
    }

    background: Rectangle {
        radius: Theme.radiusField
        color: Theme.card
        border.color: Qt.tint(color, Theme.outline)
        border.width: 1

        SoftShadow {
            z: -1
            anchors.fill: parent
            radius: parent.radius
            level: SoftShadow.Level.Menu
        }
    }

    exit: Transition {
        NumberAnimation { property: "opacity"; to: 0; duration: Theme.menuLeaveTime }
    }
}
