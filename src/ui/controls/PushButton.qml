import QtQuick
import Velmo.Controls
import QtQuick.Templates as T

/// What the buttons with words have in common. While busy the words stay and the symbol becomes a ring.
T.Button {
    id: button

    property bool small: false
    property bool busy: false
    property string symbolName: ""
    /// Whether the symbol stands behind the words.
    property bool symbolTrails: false
    property int textSize: small ? 12 : 13
    property int symbolSize: textSize
    property color fill: Theme.card
    property color fillHover: Theme.field
    property color fillPressed: Theme.buttonPressed
    property color outline: Theme.outline
    property color foreground: Theme.ink
    property int weight: Font.Medium
    readonly property real radius: small ? Theme.radiusRow : Theme.radiusField

    implicitWidth: Math.ceil(leftPadding + contentItem.implicitWidth + rightPadding)
    implicitHeight: small ? 28 : 36
    leftPadding: small ? 12 : 18
    rightPadding: leftPadding
    spacing: 6
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: text

    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    // Faded as one piece: white words on a fill stay white while the fill fades.
    contentItem: Item {
        opacity: button.enabled || button.outline.a === 0 ? 1 : Theme.disabledOpacity
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row
            anchors.centerIn: parent
            spacing: button.spacing
            layoutDirection: button.symbolTrails ? Qt.RightToLeft : Qt.LeftToRight

            Item {
                visible: button.symbolName.length > 0
                width: symbol.implicitWidth
                height: symbol.implicitHeight
                anchors.verticalCenter: parent.verticalCenter

                Symbol {
                    id: symbol
                    visible: !button.busy
                    name: button.symbolName
                    pointSize: button.symbolSize
                    weight: Symbol.Medium
                    color: button.foreground
                }

                ProgressRing {
                    visible: button.busy
                    size: symbol.implicitWidth
                }
            }

            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: button.text
                size: button.textSize
                weight: button.weight
                color: button.busy ? Theme.secondary : button.foreground
                Accessible.ignored: true
            }
        }
    }

    background: Rectangle {
        opacity: button.enabled ? 1 : Theme.disabledOpacity
        radius: button.radius
        color: button.down ? button.fillPressed : button.hovered ? button.fillHover : button.fill
        border.color: button.outline
        border.width: button.outline.a > 0 ? 1 : 0

        Behavior on color {
            enabled: !button.down
            ColorAnimation { duration: Theme.hoverTime }
        }
    }

    FocusRing { controlRadius: button.radius }
}
