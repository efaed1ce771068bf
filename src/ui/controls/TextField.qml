import QtQuick
import Velmo.Controls
import QtQuick.Templates as T

/// One line of text. Set Accessible.name where the placeholder does not say what it is for.
T.TextField {
    id: field

    property bool clearable: false
    property string leadingSymbol: ""

    implicitWidth: 200
    implicitHeight: 36
    leftPadding: leadingSymbol.length > 0 ? 37 : 13
    rightPadding: clearButton.visible ? 36 : 13
    verticalAlignment: TextInput.AlignVCenter
    opacity: enabled ? 1 : Theme.disabledOpacity
    color: Theme.ink
    placeholderTextColor: Theme.placeholder
    selectionColor: Theme.accent
    selectedTextColor: Theme.onFill
    selectByMouse: true
    hoverEnabled: true
    font.family: "Inter"
    font.pixelSize: 13
    font.hintingPreference: Font.PreferNoHinting
    Accessible.name: placeholderText
    Accessible.role: Accessible.EditableText

    background: FieldBackground {
        active: field.activeFocus
        hovered: field.hovered
    }

    Symbol {
        visible: field.leadingSymbol.length > 0
        x: 13
        anchors.verticalCenter: parent.verticalCenter
        name: field.leadingSymbol
        pointSize: 13
        color: Theme.secondary
    }

    Label {
        visible: field.text.length === 0 && field.preeditText.length === 0
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        anchors.verticalCenter: parent.verticalCenter
        text: field.placeholderText
        color: field.placeholderTextColor
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    SymbolButton {
        id: clearButton
        visible: field.clearable && field.text.length > 0
        x: field.width - width - 4
        anchors.verticalCenter: parent.verticalCenter
        symbolName: "xmark"
        symbolSize: 10
        text: qsTr("Clear")
        focusPolicy: Qt.TabFocus
        onClicked: {
            field.clear()
            field.forceActiveFocus()
        }
    }
}
