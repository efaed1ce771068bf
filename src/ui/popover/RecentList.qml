pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmo.Controls
import Velmo.Models

/// The recent texts, newest first; how to get one where there is none.
Item {
    id: recent

    required property MenuBarView view

    EmptyHint {
        anchors.centerIn: parent
        width: parent.width - 32
        visible: recent.view.entryCount === 0
        text: recent.view.emptyHint
    }

    Rectangle {
        id: card
        visible: recent.view.entryCount > 0
        width: parent.width
        height: Math.min(parent.height, list.contentHeight + 2)
        radius: Theme.radiusField
        color: Theme.card
        border.width: 1
        border.color: Theme.cardHairline
    }

    ListView {
        id: list
        anchors.fill: card
        anchors.margins: 1
        visible: card.visible
        clip: true
        model: recent.view.recentEntries
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        keyNavigationEnabled: true
        currentIndex: -1
        T.ScrollBar.vertical: ScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Recent")
        onActiveFocusChanged: if (activeFocus && currentIndex < 0) currentIndex = 0

        delegate: RecentRow {
            width: ListView.view.width
            isLast: index === recent.view.entryCount - 1
            onMenuRequested: (item, at) => menu.openFor(entryId, item, at, list.activeFocus ? list : recent)
        }
    }

    RecentMenu {
        id: menu
        view: recent.view
    }
}
