Page { title: qsTr("Mode") }
