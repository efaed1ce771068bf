import QtQuick
import Velmo.Controls
import Velmo.Models

/// The introduction at the top of the home page, until it is closed once.
Item {
    id: hero

    required property HomeView view
    readonly property bool wide: width >= 600

    implicitHeight: card.implicitHeight
    height: view.isHeroCardShown ? implicitHeight : 0
    opacity: view.isHeroCardShown ? 1 : 0
    visible: height > 0
    clip: height < implicitHeight

    Behavior on height {
        enabled: !hero.view.isHeroCardShown
        NumberAnimation { duration: Theme.heroTime; easing.type: Easing.OutCubic }
    }
    Behavior on opacity {
        NumberAnimation { duration: Theme.heroTime; easing.type: Easing.OutCubic }
    }

    Rectangle {
        id: card
        width: parent.width
        implicitHeight: words.height + 42
        radius: Theme.radiusCard
        border.color: Theme.faded(Theme.accent, 0.14)
        border.width: 1
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0; color: Theme.tint }
            GradientStop { position: 1; color: Theme.heroEnd }
        }

        Column {
            id: words
            x: 21
            y: 21
            width: key.visible ? key.x - x - 24 : parent.width - x - 45
            spacing: 6

            Label {
                width: parent.width
                text: hero.view.heroTitle
                textFormat: Text.StyledText
                size: 20
                wrapMode: Text.Wrap
            }

            Label {
                width: parent.width
                text: hero.view.heroText
                fixedLineHeight: 20
                color: Theme.secondary
                wrapMode: Text.Wrap
            }
        }

        KeyCap {
            id: key
            visible: hero.wide
            anchors.right: wave.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            implicitWidth: Math.max(44, labelWidth + 20)
            implicitHeight: 40
            radius: Theme.radiusRow
            text: hero.view.keyLabel
            size: 13
            weight: Font.DemiBold
        }

        Row {
            id: wave
            visible: hero.wide
            anchors.right: parent.right
            anchors.rightMargin: 45
            anchors.verticalCenter: parent.verticalCenter
            spacing: 3

            Repeater {
                model: [6, 12, 20, 26, 18, 24, 14, 8]

                Rectangle {
                    required property int index
                    required property int modelData
                    anchors.verticalCenter: parent.verticalCenter
                    width: 4
                    height: modelData
                    radius: 2
                    color: Theme.accent
                    opacity: 0.35 + 0.5 * modelData / 26
                }
            }
        }

        SymbolButton {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: 9
            width: 24
            height: 24
            symbolName: "xmark"
            symbolSize: 10
            symbolWeight: Symbol.Semibold
            text: qsTr("Close introduction")
            onClicked: hero.view.dismissHeroCard()
        }
    }
}
