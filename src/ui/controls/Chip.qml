import QtQuick
import QtQuick.Templates as T

/// A word that can be taken away, by its button or by Delete while it has the keyboard.
T.Control {
    id: chip

    property string text

    signal removed()

    implicitWidth: leftPadding + word.implicitWidth + rightPadding
    implicitHeight: 32
    leftPadding: 12
    rightPadding: 30
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: text

    Keys.onDeletePressed: removed()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Backspace) {
            removed()
            event.accepted = true
        }
    }

    contentItem: Label {
        id: word
        text: chip.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        maximumLineCount: 1
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: Theme.radiusRow
        color: chip.hovered ? Theme.rowHover : Theme.field
    }

    SymbolButton {
        x: chip.width - width - 5
        anchors.verticalCenter: parent.verticalCenter
        width: 22
        height: 22
        symbolName: "xmark"
        symbolSize: 9
        text: qsTr("Remove %1").arg(chip.text)
        focusPolicy: Qt.NoFocus
        onClicked: chip.removed()
    }

    FocusRing { controlRadius: Theme.radiusRow }
}
