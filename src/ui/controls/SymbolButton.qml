import QtQuick
import Velmo.Controls
import QtQuick.Templates as T

/// A button that shows a symbol alone; its text is its accessible name and tells what it acts on ("Remove Lyse").
T.Button {
    id: button

    property string symbolName
    property int symbolSize: 14
    property int symbolWeight: Symbol.Regular
    property color symbolColor: Theme.secondary
    property color symbolHoverColor: Theme.ink
    property real radius: Theme.radiusSmall

    implicitWidth: 28
    implicitHeight: 28
    opacity: enabled ? 1 : Theme.disabledOpacity
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: text

    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: button.symbolName
            pointSize: button.symbolSize
            weight: button.symbolWeight
            color: button.hovered || button.down ? button.symbolHoverColor : button.symbolColor
        }
    }

    background: Rectangle {
        radius: button.radius
        color: button.down ? Theme.pressed : button.hovered ? Theme.hoverSymbol : "transparent"
    }

    FocusRing { controlRadius: button.radius }
}
