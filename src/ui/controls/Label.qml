import QtQuick

/// Text in one of the interface's sizes, on lines of fixed height.
Text {
    id: label

    property int size: 13
    property int weight: Font.Normal
    property bool capitals: false
    /// 0: that of the size.
    property int fixedLineHeight: 0

    readonly property int usedLineHeight: fixedLineHeight > 0 ? fixedLineHeight : Theme.lineHeight(size)

    color: Theme.ink
    font.family: "Inter"
    font.pixelSize: size
    font.weight: weight
    font.letterSpacing: capitals ? 0.5 : Theme.letterSpacing(size)
    font.capitalization: capitals ? Font.AllUppercase : Font.MixedCase
    font.hintingPreference: Font.PreferNoHinting
    textFormat: Text.PlainText
    lineHeightMode: Text.FixedHeight
    lineHeight: usedLineHeight
    // A fixed height leaves its surplus below the letters; half of it belongs above them.
    topPadding: Math.round((usedLineHeight - Theme.letterHeight(size)) / 2)
    bottomPadding: -topPadding
    Accessible.role: Accessible.StaticText
    Accessible.name: textFormat === Text.StyledText ? text.replace(/<[^>]*>/g, "") : text
}
