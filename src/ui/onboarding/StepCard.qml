import QtQuick
import Velmo.Controls

/// A step: open with its button while it is its turn, quiet before, checked after.
Rectangle {
    id: card

    required property int number
    required property string title
    required property string description
    required property bool done
    required property bool current
    required property string buttonText
    required property string buttonSymbol
    required property string hint
    required property string note

    /// Whether the title alone is shown, to leave its place to what comes after the steps.
    required property bool folded

    signal acted()

    implicitHeight: texts.height + 34
    radius: Theme.radiusCard
    color: done || current ? Theme.card : "transparent"
    border.width: 1
    border.color: current ? Theme.accent : done ? Theme.hairline : Theme.outline
    clip: true
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Step %1: %2").arg(number).arg(title)
    Accessible.description: done ? qsTr("Done") : note

    Behavior on implicitHeight {
        NumberAnimation { duration: Theme.onboardingTime; easing.type: Easing.InOutQuad }
    }

    StepBadge {
        x: 16
        y: 16
        number: card.number
        done: card.done
        current: card.current
    }

    Column {
        id: texts
        x: 58
        y: 18
        width: parent.width - 58 - 16
        spacing: 4

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: card.title
            size: 15
            fixedLineHeight: 24
            weight: Font.DemiBold
        }

        Label {
            width: parent.width
            visible: !card.folded
            wrapMode: Text.Wrap
            text: card.description
            color: Theme.secondary
        }

        Item {
            visible: button.visible
            width: 1
            height: 4
        }

        PrimaryButton {
            id: button
            visible: card.buttonText.length > 0
            text: card.buttonText
            symbolName: card.buttonSymbol
            symbolTrails: true
            symbolSize: 12
            onClicked: card.acted()
        }

        Item {
            visible: button.visible
            width: 1
            height: 2
        }

        Label {
            width: parent.width
            visible: card.hint.length > 0
            wrapMode: Text.Wrap
            text: card.hint
            textFormat: Text.StyledText
            size: 12
            color: Theme.secondary
            Accessible.name: card.hint.replace(/<[^>]*>/g, "")
        }

        Label {
            width: parent.width
            visible: card.note.length > 0
            text: card.note
            size: 12
            weight: Font.Medium
            color: Theme.secondary
        }
    }
}
