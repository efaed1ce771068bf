import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// A mode that can be chosen. With smart formatting off the choice is kept, not used, and shown in grey.
T.AbstractButton {
    id: card

    required property int index
    required property string modeId
    required property string name
    required property string symbol
    required property string description
    required property bool chosen
    property bool dimmed: false
    property bool editable: false
    property bool isTabStop: true

    signal editRequested()
    signal removeRequested()

    readonly property bool hasKeyboard: activeFocus || edit.activeFocus || remove.activeFocus
    readonly property bool _isUsed: chosen && !dimmed

    text: name
    implicitHeight: 64
    focusPolicy: isTabStop || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    hoverEnabled: true
    Accessible.role: Accessible.RadioButton
    Accessible.name: name
    Accessible.description: description
    Accessible.checkable: true
    Accessible.checked: chosen
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onDeletePressed: if (editable) removeRequested()

    background: Rectangle {
        radius: Theme.radiusCard
        color: card._isUsed ? Theme.tint : card.chosen ? Theme.field : Theme.card
        border.width: 1
        border.color: card._isUsed ? Theme.accent : card.chosen || card.hovered ? Theme.outlineHover : Theme.hairline
    }

    contentItem: Item {
        Rectangle {
            id: icon
            x: 14
            anchors.verticalCenter: parent.verticalCenter
            width: 36
            height: 36
            radius: Theme.radiusRow
            color: card.chosen ? Theme.card : Theme.field

            Symbol {
                anchors.centerIn: parent
                name: card.symbol
                pointSize: 15
                color: card._isUsed ? Theme.accent : Theme.secondary
            }
        }

        Column {
            anchors.left: icon.right
            anchors.leftMargin: 12
            anchors.right: buttons.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter

            Row {
                width: parent.width
                spacing: 8

                Label {
                    Accessible.ignored: true
                    width: parent.width - (mark.visible ? mark.width + 8 : 0)
                    text: card.name
                    elide: Text.ElideRight
                    size: 14
                    weight: Font.DemiBold
                }

                Symbol {
                    id: mark
                    visible: card.chosen
                    anchors.verticalCenter: parent.verticalCenter
                    name: "checkmark.circle.fill"
                    pointSize: 13
                    color: card.dimmed ? Theme.secondary : Theme.accent
                }
            }

            Label {
                Accessible.ignored: true
                width: parent.width
                text: card.description
                elide: Text.ElideRight
                size: 12
                color: Theme.secondary
            }
        }

        Row {
            id: buttons
            anchors.right: parent.right
            anchors.rightMargin: card.editable ? 8 : 6
            anchors.verticalCenter: parent.verticalCenter
            width: card.editable ? implicitWidth : 0
            visible: card.editable

            SymbolButton {
                id: edit
                symbolName: "pencil"
                text: qsTr("Edit mode %1").arg(card.name)
                onClicked: card.editRequested()
            }

            SymbolButton {
                id: remove
                symbolName: "xmark"
                symbolSize: 12
                text: qsTr("Remove mode %1").arg(card.name)
                onClicked: card.removeRequested()
            }
        }
    }

    FocusRing { controlRadius: Theme.radiusCard }
}
