Page { title: qsTr("Account") }
