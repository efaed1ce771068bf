import QtQuick
import Velmo.Controls

/// Something to know, in a field of its own; styled text.
Item {
    id: note

    property string text
    property real bottomMargin: 0

    implicitHeight: box.height + bottomMargin
    Accessible.role: Accessible.Note
    Accessible.name: text.replace(/<[^>]*>/g, "")

    Rectangle {
        id: box
        width: parent.width
        height: sentence.height + 20
        radius: Theme.radiusRow
        color: Theme.field

        Symbol {
            x: 12
            y: 11
            name: "info.circle"
            pointSize: 13
            color: Theme.secondary
        }

        SelectableText {
            id: sentence
            x: 38
            y: 10
            width: parent.width - 50
            text: "<p style=\"line-height:125%\">%1</p>".arg(note.text)
            textFormat: TextEdit.RichText
            size: 12
            color: Theme.secondary
            Accessible.ignored: true
        }
    }
}
