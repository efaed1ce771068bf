PlaceholderView {
    symbolName: "note.text"
    title: qsTr("Notes")
    description: qsTr("Quick voice notes saved for later reference.")
}
