import QtQuick
import QtQuick.Templates as T
import Velmo.Controls

/// A snippet in the list.
T.Control {
    id: row

    required property int index
    required property bool isCurrent
    required property string trigger
    required property string preview

    signal editRequested()
    signal removeRequested()

    focusPolicy: Qt.ClickFocus
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: trigger + ", " + preview

    Keys.onReturnPressed: editRequested()
    Keys.onEnterPressed: editRequested()
    Keys.onDeletePressed: removeRequested()

    background: Rectangle {
        radius: Theme.radiusRow
        color: row.hovered ? Theme.rowHover : Theme.field
    }

    Column {
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        width: buttons.x - x - 16

        Label {
            width: parent.width
            text: row.trigger
            size: 14
            weight: Font.DemiBold
            elide: Text.ElideRight
            maximumLineCount: 1
        }

        Label {
            width: parent.width
            text: row.preview
            fixedLineHeight: 20
            color: Theme.secondary
            elide: Text.ElideRight
            maximumLineCount: 1
        }
    }

    Row {
        id: buttons
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12

        SymbolButton {
            symbolName: "pencil"
            text: qsTr("Edit snippet %1").arg(row.trigger)
            focusPolicy: row.isCurrent || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
            onClicked: row.editRequested()
        }

        SymbolButton {
            symbolName: "xmark"
            symbolSize: 12
            text: qsTr("Remove snippet %1").arg(row.trigger)
            focusPolicy: row.isCurrent || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
            onClicked: row.removeRequested()
        }
    }

    FocusRing { controlRadius: Theme.radiusRow }
}
