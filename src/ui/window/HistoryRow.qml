import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// One dictation of the history; the first of a day is headed by the day, and together they look like one card.
T.Control {
    id: row

    required property int index
    required property string entryId
    required property string text
    required property string time
    required property string day
    required property bool isFirst
    required property bool isLast
    property bool menuIsOpen: false
    property bool textHasFocus: false

    property bool _buttonHasFocus: false
    readonly property bool _active: hovered || activeFocus || menuIsOpen || _buttonHasFocus || textHasFocus

    /// The menu should open at that place of the item.
    signal menuRequested(Item item, real x, real y)
    signal copyRequested()
    signal removeRequested()

    topPadding: isFirst ? (index > 0 ? 24 + 16 + 8 : 8 + 16 + 8) : 0
    bottomPadding: 1 // the divider, or the card's edge
    implicitHeight: words.y + words.height + 12 + bottomPadding
    focusPolicy: Qt.ClickFocus
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: day + ", " + time + ", " + text

    function openMenuByButton() {
        menuRequested(row, button.x + button.width - 160, button.y + button.height + 4)
    }

    Keys.onMenuPressed: openMenuByButton()
    Keys.onReturnPressed: openMenuByButton()
    Keys.onSpacePressed: openMenuByButton()
    Keys.onDeletePressed: removeRequested()
    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)
            openMenuByButton()
        else if (event.matches(StandardKey.Copy))
            copyRequested()
        else
            event.accepted = false
    }

    // What few rows show at a time is made only there: a hundred rows are made at once.
    Loader {
        active: row.isFirst
        x: 4
        y: row.topPadding - 24

        sourceComponent: Label {
            // qmllint disable unqualified
            text: row.day
            size: 12
            weight: Font.DemiBold
            capitals: true
            color: Theme.secondary
            Accessible.role: Accessible.Heading
            // qmllint enable unqualified
        }
    }

    background: Item {
        CardPart {
            y: row.topPadding
            width: parent.width
            height: parent.height - y
            isFirst: row.isFirst
            isLast: row.isLast
            active: row._active
        }
    }

    TabularText {
        x: 17
        anchors.baseline: words.baseline
        text: row.time
        font.family: "Inter"
        font.pixelSize: 13
        font.weight: Font.Medium
        font.hintingPreference: Font.PreferNoHinting
        color: Theme.secondary
    }

    Label {
        id: words
        visible: !selectable.active
        x: 81
        y: row.topPadding + (row.isFirst ? 1 : 0) + 12
        width: row.width - x - 45 // keeps clear of the button, so that no line moves under the pointer
        text: row.text
        size: 14
        wrapMode: Text.Wrap
    }

    // Text that can be selected costs much more, so it is there for the row under the pointer alone.
    Loader {
        id: selectable
        active: row.hovered || row.textHasFocus
        x: words.x
        width: words.width

        sourceComponent: SelectableText {
            // qmllint disable unqualified
            y: words.y + words.baselineOffset - 0.8 * words.lineHeight // where such lines have their baseline
            width: parent.width
            text: words.text
            size: words.size
            Accessible.ignored: true
            Component.onCompleted: LineHeight.set(textDocument, words.lineHeight)
            onActiveFocusChanged: row.textHasFocus = activeFocus
            Keys.onEscapePressed: row.forceActiveFocus(Qt.MouseFocusReason)
            Keys.onDeletePressed: event => event.accepted = selectedText.length > 0 // the dictation is not meant
            Keys.onPressed: event => {
                event.accepted = selectedText.length === 0 && event.matches(StandardKey.Copy)
                if (event.accepted)
                    row.copyRequested()
            }
            // qmllint enable unqualified
        }
    }

    Divider {
        visible: !row.isLast
        x: 81
        y: parent.height - height
        width: parent.width - x - 1
    }

    Loader {
        id: button
        active: row._active
        x: row.width - width - 9
        y: words.y - 4
        width: 28
        height: 28

        sourceComponent: SymbolButton {
            // qmllint disable unqualified
            symbolName: "ellipsis"
            text: qsTr("More for %1").arg(row.time)
            focusPolicy: row.activeFocus || activeFocus ? Qt.StrongFocus : Qt.NoFocus
            onClicked: row.openMenuByButton()
            onActiveFocusChanged: row._buttonHasFocus = activeFocus
            // qmllint enable unqualified
        }
    }

    Loader {
        active: row.visualFocus
        y: row.topPadding
        width: row.width
        height: row.height - y

        sourceComponent: Rectangle {
            color: "transparent"
            radius: Theme.radiusCard
            border.color: Theme.accent
            border.width: 2
        }
    }
}
