import QtQuick
import Velmo.Controls

/// A page that is still to come.
Item {
    id: placeholder

    required property string symbolName
    required property string title
    required property string description

    Column {
        anchors.centerIn: parent

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: placeholder.symbolName
            pointSize: 48
            weight: Symbol.Light
            color: Theme.ink
            opacity: 0.25
        }

        Item { width: 1; height: 16 }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: placeholder.title
            size: 20
            weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }

        Item { width: 1; height: 6 }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 300
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: placeholder.description
            size: 14
            color: Theme.secondary
        }

        Item { width: 1; height: 20 }

        Badge {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Coming Soon")
            color: Theme.tint
            textColor: Theme.accent
            weight: Font.DemiBold
            horizontalPadding: 14
            verticalPadding: 6
        }
    }
}
