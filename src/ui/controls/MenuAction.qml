import QtQuick
import Velmo.Controls
import QtQuick.Templates as T

/// One line of a ContextMenu.
T.MenuItem {
    id: item

    property string symbolName
    /// Without it the symbol's place stays empty.
    property bool symbolVisible: true
    property color symbolColor: _color
    property bool destructive: false
    readonly property color _color: destructive ? Theme.red : Theme.ink

    implicitWidth: 152
    implicitHeight: 28
    leftPadding: 8
    rightPadding: 8
    hoverEnabled: true
    Accessible.name: text

    contentItem: Row {
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: item.symbolName
            pointSize: 13
            color: item.symbolColor
            opacity: item.symbolVisible ? 1 : 0
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: item.text
            color: item._color
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.radiusSmall
        color: item.down ? Theme.pressed : item.highlighted || item.hovered ? Theme.field : "transparent"
    }
}
