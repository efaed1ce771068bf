pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Flow
import Velmo.Models
import Velmo.Window

/// Snippets, to be added, found, edited and removed.
Page {
    id: page

    required property SnippetsView view

    title: qsTr("Snippets")
    badge: view.countText
    description: qsTr("Create shortcuts for phrases you use often. When you say the trigger phrase, Velmo replaces it with your snippet text.")
    searchField: search

    trailing: PrimaryButton {
        leftPadding: 16
        text: qsTr("Add Snippet")
        symbolName: "plus"
        onClicked: page.view.openAddSheet()
    }

    Card {
        width: parent.width
        height: search.height + 34 + (empty.visible ? empty.height : 12 + list.implicitHeight)

        SearchField {
            id: search
            width: parent.width
            placeholderText: qsTr("Search snippets...")
            text: page.view.searchText
            onTextChanged: page.view.searchText = text
        }

        FlowView {
            id: list
            y: search.height + 12
            width: parent.width
            height: implicitHeight
            model: page.view.filteredSnippets
            scrolledItem: page.scrolling.contentItem
            spacing: 8
            itemHeight: 64
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Snippets")

            delegate: SnippetRow {
                onEditRequested: page.view.openEditSheet(index)
                onRemoveRequested: page.view.removeRow(index)
            }
        }

        EmptyState {
            id: empty
            visible: list.count === 0
            bare: true
            y: search.height
            width: parent.width
            height: 212
            symbolName: "text.quote"
            title: page.view.emptyText
        }
    }

    SnippetEditor {
        editor: page.view.sheet
    }
}
