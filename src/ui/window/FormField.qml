import QtQuick
import Velmo.Controls

/// A part of a form under its name.
Column {
    id: field

    property alias label: caption.text

    spacing: 6

    Label {
        id: caption
        size: 12
        weight: Font.Medium
        color: Theme.secondary
    }
}
