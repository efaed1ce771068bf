Page { title: qsTr("Settings") }
