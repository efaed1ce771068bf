pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Flow
import Velmo.Models
import Velmo.Window

/// Custom words, to be added, found and removed, and the learned ones.
Page {
    id: page

    required property DictionaryView view

    title: qsTr("Dictionary")
    badge: view.countText
    description: qsTr("Add custom words to improve transcription accuracy. These words are sent as hints to the transcription engine.")
    searchField: search
    Component.onCompleted: {
        if (chips.count === 0)
            newWord.focus = true
    }

    Column {
        width: parent.width
        spacing: 12

        Card {
            width: parent.width
            height: 70

            TextField {
                id: newWord
                width: parent.width - addButton.width - 8
                placeholderText: qsTr("Add a new word...")
                text: page.view.newWord
                onTextEdited: page.view.newWord = text
                onAccepted: page.view.addWord()
            }

            PrimaryButton {
                id: addButton
                anchors.right: parent.right
                leftPadding: 16
                text: qsTr("Add")
                enabled: page.view.canAdd
                onClicked: {
                    page.view.addWord()
                    newWord.forceActiveFocus()
                }
            }
        }

        Card {
            width: parent.width
            height: search.height + 34 + (empty.visible ? empty.height : 16 + chips.implicitHeight)

            SearchField {
                id: search
                width: parent.width
                placeholderText: qsTr("Search words...")
                text: page.view.searchText
                onTextChanged: page.view.searchText = text
            }

            FlowView {
                id: chips
                y: search.height + 16
                width: parent.width
                height: implicitHeight
                model: page.view.filteredWords
                scrolledItem: page.scrolling.contentItem
                spacing: 8
                itemHeight: 32
                measuredRole: "word"
                itemPadding: 42
                font: metrics.font
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Custom words")

                delegate: Chip {
                    required property int index
                    required property bool isCurrent
                    required property string word

                    text: word
                    focusPolicy: Qt.ClickFocus
                    onRemoved: page.view.removeWord(word)
                }
            }

            EmptyState {
                id: empty
                visible: chips.count === 0
                bare: true
                y: search.height
                width: parent.width
                height: 216
                symbolName: "book"
                title: page.view.emptyText
            }
        }
    }

    LearnedWords {
        visible: page.view.learnedWords.length > 0
        width: parent.width
        groups: page.view.learnedWords
    }

    Label {
        id: metrics
        visible: false
    }
}
