import QtQuick

/// A field that filters what stands below it. Escape empties it.
TextField {
    clearable: true
    leadingSymbol: "magnifyingglass"
    Accessible.searchEdit: true

    Keys.onEscapePressed: event => {
        event.accepted = text.length > 0
        clear()
    }
}
