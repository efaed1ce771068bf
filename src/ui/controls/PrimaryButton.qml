import QtQuick

/// The button that does what its page or sheet is for.
PushButton {
    fill: Theme.accent
    fillHover: Theme.accentHover
    fillPressed: Theme.accentPressed
    outline: "transparent"
    foreground: Theme.onFill
    weight: Font.DemiBold
}
