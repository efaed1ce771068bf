import QtQuick
import Velmo.Controls

/// Text that people copy: it can be selected.
TextEdit {
    property int size: 13
    property int weight: Font.Normal

    readOnly: true
    selectByMouse: true
    wrapMode: TextEdit.Wrap
    textFormat: TextEdit.PlainText
    color: Theme.ink
    selectionColor: Theme.accent
    selectedTextColor: Theme.onFill
    font.family: "Inter"
    font.pixelSize: size
    font.weight: weight
    font.hintingPreference: Font.PreferNoHinting
    activeFocusOnTab: false
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    onActiveFocusChanged: if (!activeFocus) deselect()
}
