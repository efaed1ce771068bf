import QtQuick
import Velmo.Controls

/// A card of settings under its heading.
Column {
    id: section

    property alias symbolName: heading.symbolName
    property alias title: heading.text
    property real topGap: 8 ///< Beside the spacing of the page's blocks.
    property real cardPadding: 0
    default property alias rows: inside.data

    topPadding: topGap
    spacing: 8

    SectionHeading {
        id: heading
    }

    Card {
        width: parent.width
        padding: 0
        implicitHeight: inside.height + 2 + 2 * section.cardPadding

        Column {
            id: inside
            x: 16
            y: section.cardPadding
            width: parent.width - 32
        }
    }
}
