import QtQuick
import Velmo.Controls

/// What went wrong, where it was tried.
Row {
    id: warning

    property alias text: sentence.text
    property real maximumWidth: 400

    spacing: 6
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Symbol {
        id: symbol
        anchors.top: sentence.top
        anchors.topMargin: 1
        name: "exclamationmark.triangle"
        pointSize: 12
        color: Theme.orangeText
    }

    Label {
        id: sentence
        width: Math.min(implicitWidth, warning.maximumWidth - symbol.width - warning.spacing)
        wrapMode: Text.Wrap
        size: 12
        color: Theme.orangeText
        Accessible.ignored: true
    }
}
