import QtQuick
import QtQuick.Templates as T

/// Several lines of text, 80 high unless told otherwise, scrolling when there are more. Tab leaves it.
Item {
    id: area

    property alias text: input.text
    property alias placeholderText: input.placeholderText
    property alias input: input
    property string accessibleName: placeholderText
    readonly property bool hovered: input.hovered

    signal edited()

    implicitWidth: 200
    implicitHeight: 80
    opacity: enabled ? 1 : Theme.disabledOpacity

    FieldBackground {
        anchors.fill: parent
        active: input.activeFocus
        hovered: input.hovered
    }

    Flickable {
        id: flickable
        anchors.fill: parent
        anchors.margins: 2
        clip: true
        contentWidth: width
        contentHeight: input.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollBar {}
        T.TextArea.flickable: null

        T.TextArea {
            id: input
            width: flickable.width
            height: Math.max(implicitHeight, flickable.height)
            implicitHeight: Math.max(contentHeight, placeholder.implicitHeight) + topPadding + bottomPadding
            leftPadding: 11
            rightPadding: 11
            topPadding: 7
            bottomPadding: 7
            wrapMode: TextEdit.Wrap
            color: Theme.ink
            selectionColor: Theme.accent
            selectedTextColor: Theme.onFill
            selectByMouse: true
            hoverEnabled: true
            textFormat: TextEdit.PlainText
            font.family: "Inter"
            font.pixelSize: 13
            font.hintingPreference: Font.PreferNoHinting
            Accessible.name: area.accessibleName
            onTextChanged: area.edited()
            onCursorRectangleChanged: flickable.reveal(cursorRectangle)

            KeyNavigation.priority: KeyNavigation.BeforeItem
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

            Label {
                id: placeholder
                visible: input.text.length === 0 && input.preeditText.length === 0
                x: input.leftPadding
                y: input.topPadding
                width: input.width - 22
                text: input.placeholderText
                color: Theme.placeholder
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }

        function reveal(cursor: rect) {
            if (cursor.y < contentY)
                contentY = Math.max(0, cursor.y - input.topPadding)
            else if (cursor.y + cursor.height > contentY + height)
                contentY = cursor.y + cursor.height - height + input.bottomPadding
        }
    }
}
